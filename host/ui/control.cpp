#include "host/ui/control.h"

#include <utility>

#include "host/resources/texts.h"

namespace host {

ControlOwner::~ControlOwner() = default;

Control::Control(ControlOwner& owner, const ControlSpec& spec)
    : owner_(owner),
      id_(spec.id),
      name_(spec.name),
      kind_(spec.kind),
      enabled_(spec.enabled),
      visible_(spec.visible) {
  if (spec.text != TextId::None) text_ = XCLoadString(spec.text);
}

Control::~Control() = default;

void Control::setText(std::u16string_view text) {
  if (text_ == text) return;
  text_ = text;
  changed(Change::text);
}

void Control::setEnabled(bool enabled, std::u16string_view reason) {
  if (enabled_ == enabled && disabledReason_ == reason) return;
  enabled_ = enabled;
  disabledReason_ = reason;
  changed(Change::state);
}

void Control::setVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  changed(Change::state);
}

unsigned Control::takeChanges() {
  return std::exchange(changes_, 0U);
}

void Control::changed(Change change) {
  changes_ |= static_cast<unsigned>(change);
  owner_.onChanged(*this);
}

}  // namespace host
