#include "host/ui/controls/choice_controls.h"

#include <algorithm>

namespace host {

void CheckControl::setOn(bool on) {
  if (on_ == on) return;
  on_ = on;
  changed(Change::state);
}

void CheckControl::setSwatch(Colour colour) {
  if (swatch_ == colour) return;
  swatch_ = colour;
  changed(Change::state);
}

void ComboControl::clearItems() {
  items_.clear();
  selected_.reset();
  changed(Change::items);
}

void ComboControl::addItem(std::u16string_view text, int data) {
  items_.push_back({text, data});
  changed(Change::items);
}

std::optional<int> ComboControl::selectedData() const {
  if (!selected_) return std::nullopt;
  return items_[*selected_].data;
}

void ComboControl::select(std::optional<std::size_t> index) {
  if (index && *index >= items_.size()) index.reset();
  if (selected_ == index) return;
  selected_ = index;
  changed(Change::state);
}

void ComboControl::selectData(int data) {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [data](const Item& item) { return item.data == data; });
  if (found == items_.end())
    select(std::nullopt);
  else
    select(static_cast<std::size_t>(found - items_.begin()));
}

XCBasicString IpControl::afterTyping(std::u16string_view typed) const {
  const auto isDigit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
  if (text().IsEmpty() && std::none_of(typed.begin(), typed.end(), isDigit)) return {};
  int parts[4] = {};
  std::size_t part = 0;
  for (const char16_t c : typed) {
    if (c == u'.') {
      if (++part == 4) break;
    } else if (isDigit(c)) {
      parts[part] = std::min(parts[part] * 10 + (c - u'0'), 255);
    }
  }
  return XCBasicString::Format(u"%d.%d.%d.%d", parts[0], parts[1], parts[2], parts[3]);
}

}  // namespace host
