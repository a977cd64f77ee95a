#include "workbench/row_value.h"

namespace workbench {
namespace {

constexpr std::string_view Time = "time";

bool isStep(std::string_view name, std::string_view beginning) {
  return name.size() == beginning.size() + 1 && name.starts_with(beginning) && name.back() >= '1' &&
         name.back() <= '9';
}

std::u16string twoDigits(const std::u16string& number) {
  return number.size() == 1 ? u"0" + number : number;
}

}  // namespace

std::u16string clockTime(const std::u16string& hour, const std::u16string& minute) {
  return hour.empty() && minute.empty() ? hour : twoDigits(hour) + u":" + twoDigits(minute);
}

RowValue::RowValue(const std::string& name) : name_(name), attribute_(host::XmlName::find(name)) {
  if (isStep(name, Time))
    clock_ = Clock{host::XmlName::find("hour" + name.substr(Time.size())),
                   host::XmlName::find("min" + name.substr(Time.size()))};
}

std::string RowValue::nameFor(const std::string& attribute) {
  if (isStep(attribute, "hour") || isStep(attribute, "min"))
    return std::string(Time) + attribute.back();
  return attribute;
}

std::vector<RowValue> RowValue::allOf(const Node& row) {
  std::vector<RowValue> all;
  for (std::size_t i = 0; i < row.attributeCount(); ++i) {
    const std::string attribute(host::xmlNameText(row.attributeName(i).id()));
    if (!isStep(attribute, "min")) all.emplace_back(nameFor(attribute));
  }
  return all;
}

bool RowValue::isIn(const Node& row) const {
  return row.hasAttribute(attribute_) || (clock_ && row.hasAttribute(clock_->hour));
}

std::u16string RowValue::of(const Node& row) const {
  if (!clock_ || row.hasAttribute(attribute_)) return row.getAttribute(attribute_).str();
  if (!row.hasAttribute(clock_->hour)) return {};
  return clockTime(row.getAttribute(clock_->hour).str(), row.getAttribute(clock_->minute).str());
}

}  // namespace workbench
