#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/xml/xml_document.h"

namespace workbench {

/// A value of a row as one edit shows it: an attribute, or where the row has no such attribute the
/// hour and the minute of a program's step together, `time2` being "22:30" for `hour2` and `min2`.
class RowValue {
 public:
  using Node = XmlDocument::XmlNode;

  explicit RowValue(const std::string& name);
  /// All values of a row, in their order.
  static std::vector<RowValue> allOf(const Node& row);
  /// The attribute `hour2` or `min2` belongs to the value `time2`; any other is a value itself.
  static std::string nameFor(const std::string& attribute);

  const std::string& name() const { return name_; }
  bool isIn(const Node& row) const;
  /// Empty where the row lacks it.
  std::u16string of(const Node& row) const;

 private:
  struct Clock {
    host::XmlName hour;
    host::XmlName minute;
  };
  std::string name_;
  host::XmlName attribute_;
  std::optional<Clock> clock_;
};

/// "05:30" for "5" and "30"; empty when both are.
std::u16string clockTime(const std::u16string& hour, const std::u16string& minute);

}  // namespace workbench
