#include "host/ui/controls/edit_control.h"

#include <algorithm>

namespace host {

EditControl::EditControl(ControlOwner& owner, const ControlSpec& spec)
    : Control(owner, spec),
      limit_(spec.limit),
      digitsOnly_(spec.digitsOnly),
      password_(spec.password),
      readOnly_(spec.readOnly) {}

void EditControl::setText(std::u16string_view newText) {
  if (text() == newText) return;
  storeText(newText);
  from_ = to_ = std::min(to_, newText.size());
  changed(Change::text);
  notice(Notice::changed);
}

void EditControl::setLimit(int characters) {
  limit_ = characters;
  changed(Change::state);
}

void EditControl::setMask(TextMask mask) {
  mask_ = std::move(mask);
  changed(Change::state);
}

void EditControl::select(std::size_t from, std::size_t to) {
  to_ = std::min(to, text().Length());
  from_ = std::min(from, to_);
  changed(Change::selection);
}

}  // namespace host
