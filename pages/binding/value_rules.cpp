#include "pages/binding/value_rules.h"

namespace lamp {

using host::TextId;
using Node = XmlDocument::XmlNode;

host::ValueRule notEmpty(host::XmlName attribute) {
  return {[attribute](const Node& element, std::size_t& place) {
            return !element.attribute(attribute, place).empty();
          },
          [](const Node&) { return XCLoadString(TextId::FieldInvalid); }};
}

host::ValueRule numberBetween(host::XmlName attribute, host::Caption caption, int lowest,
                              int highest) {
  return {[attribute, highest](const Node& element, std::size_t& place) {
            const host::XmlText text = element.attribute(attribute, place);
            return !text.empty() && text.toInt() <= highest;
          },
          [caption, lowest, highest](const Node&) { return outOfRange(caption, lowest, highest); }};
}

host::ValueRule powerInPercent(host::XmlName attribute) {
  return numberBetween(attribute, PowerCaption, 0, 100);
}

XCBasicString outOfRange(const host::Caption& caption, int lowest, int highest) {
  return XCBasicString::Format(XCLoadString(TextId::ValueOutOfRange), caption.toString(), lowest,
                               highest);
}

}  // namespace lamp
