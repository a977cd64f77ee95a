#include "workbench/read_back.h"

#include <map>
#include <optional>

#include "workbench/page_values.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using Values = std::map<std::string, std::u16string>;

constexpr const char* Activation = "ActDate";
const host::XmlName Line("Dir");
const host::XmlName TaskNumber("TpTar");
const host::XmlName TaskPeriod("TpPer");

bool isStamp(const std::string& name) {
  return name == Activation || name == "Fh";
}

std::string utf8(const std::u16string& text) {
  return XCBasicString(text).ToUtf8();
}

// The number of an input, an output or a task; none for another element.
std::optional<std::string> numberOf(const Node& element) {
  for (const host::XmlName name : {Line, TaskNumber})
    if (element.hasAttribute(name)) return element.getAttribute(name).ToUtf8();
  return std::nullopt;
}

// The state of an input or an output is sent along, but it is not what the sender decides.
bool isState(const Node& element, const std::string& name) {
  return name == "Value" && element.hasAttribute(Line);
}

// Children without an identity are told apart by their number, or by their place among those with
// their name.
void addNested(const Node& element, const std::string& path, Values& values) {
  std::map<std::string, int> places;
  for (const Node& child : element.Children()) {
    if (!rowKey(child).empty()) continue;
    const std::string tag(child.Tag());
    const std::string place = std::to_string(++places[tag]);
    const std::string below = path + tag + "[" + numberOf(child).value_or(place) + "] ";
    // A task without a period is one that is to be deleted: nothing else of it counts.
    if (child.hasAttribute(TaskPeriod) && child.attribute(TaskPeriod).empty()) {
      values[below + "TpPer"] = {};
      continue;
    }
    for (const auto& [name, value] : valuesOf(child).fields)
      if (!isStamp(name) && !isState(child, name)) values[below + name] = value;
    if (const XCBasicString text = child.Text(); !text.IsEmpty()) values[below] = text.str();
    addNested(child, below, values);
  }
}

Values flat(const Node& section) {
  const PageValues all = valuesOf(section);
  Values values;
  for (const auto& [name, value] : all.fields)
    if (!isStamp(name)) values[name] = value;
  for (const auto& [key, row] : all.rows)
    for (const auto& [name, value] : row)
      if (!isStamp(name)) values[utf8(key) + ": " + name] = value;
  addNested(section, {}, values);
  return values;
}

}  // namespace

ReadBackReport compareReadBack(const Node& sent, const Node& read) {
  const Values there = flat(read);
  ReadBackReport report;
  report.activation = sent.getAttribute(Activation).ToUtf8();
  for (const auto& [what, value] : flat(sent)) {
    ++report.values;
    const auto now = there.find(what);
    const std::u16string found = now == there.end() ? std::u16string() : now->second;
    if (found != value) report.notTaken.push_back({what, utf8(value), utf8(found)});
  }
  return report;
}

}  // namespace workbench
