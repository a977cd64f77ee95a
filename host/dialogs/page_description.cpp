#include "host/dialogs/page_description.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::u16string_view Joint = u":";

template <class Visit>
void forEachBinding(const std::vector<RowSet>& sets, const Visit& visit) {
  for (const RowSet& set : sets) {
    for (const Binding& binding : set.bindings) visit(set, binding);
    forEachBinding(set.within, visit);
  }
}

// Every line of a grid has a control of its own for each value.
bool standsInLines(const RowSet& set) {
  return set.controlOf != nullptr;
}

}  // namespace

XCBasicString Caption::toString() const {
  if (unitInside) return XCBasicString::Format(XCLoadString(text), XCLoadString(unit));
  XCBasicString made;
  if (text != TextId::None) made = XCLoadString(text);
  if (number != 0) made += XCBasicString(u" ") + decimal(number);
  made += suffix;
  if (unit != TextId::None) made += XCBasicString(u" (") + XCLoadString(unit) + u")";
  return made;
}

XCBasicString Binding::valueIn(const Node& element) const {
  return read ? read(element) : element.getAttribute(attributes.front());
}

void Binding::put(Node& element, const XCBasicString& value) const {
  if (write)
    write(element, value);
  else
    element.setAttribute(attributes.front(), value);
}

XCBasicString Binding::entryValue(int data) const {
  if (valueOfEntry) return valueOfEntry(data);
  return XCBasicString(std::u16string(1, static_cast<char16_t>(data)));
}

bool Binding::isIn(const Node& element) const {
  return std::any_of(attributes.begin(), attributes.end(),
                     [&](XmlName attribute) { return element.hasAttribute(attribute); });
}

XCBasicString Binding::ownText(const Node& element) const {
  XCBasicString text;
  for (const XmlName attribute : attributes) {
    if (attribute != attributes.front()) text += Joint;
    text += element.getAttribute(attribute);
  }
  return text;
}

bool Binding::agrees(const Node& one, const Node& other) const {
  if (part) return valueIn(one) == valueIn(other);
  return std::all_of(attributes.begin(), attributes.end(), [&](XmlName attribute) {
    const XmlText text = one.attribute(attribute);
    if (!(text == other.attribute(attribute))) return false;
    return !text.empty() || one.hasAttribute(attribute) == other.hasAttribute(attribute);
  });
}

XCBasicString captionOf(const PageDescription& page, const Binding& binding) {
  const XCBasicString own = binding.caption.toString();
  int edits = 0;
  const auto count = [&](const Binding& other, bool inLines) {
    if (other.control == 0 && binding.control != 0 && !inLines) return;
    if (other.caption.toString() == own) edits += inLines ? 2 : 1;
  };
  for (const Binding& field : page.fields) count(field, false);
  forEachBinding(page.rows, [&](const RowSet& set, const Binding& other) {
    count(other, standsInLines(set));
  });
  const XCBasicString frame = edits > 1 ? binding.frame.toString() : XCBasicString();
  return frame.IsEmpty() ? own : frame + u": " + own;
}

}  // namespace host
