#include "workbench/read_back.h"

#include <map>

#include "workbench/page_values.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using Values = std::map<std::string, std::u16string>;

constexpr const char* Activation = "ActDate";

bool isStamp(const std::string& name) {
  return name == Activation || name == "Fh";
}

std::string utf8(const std::u16string& text) {
  return XCBasicString(text).ToUtf8();
}

// Children without an identity are told apart by their place among those with their name.
void addNested(const Node& element, const std::string& path, Values& values) {
  std::map<std::string, int> places;
  for (const Node& child : element.Children()) {
    if (!rowKey(child).empty()) continue;
    const std::string tag(child.Tag());
    const int place = ++places[tag];
    const std::string below = path + tag + "[" + std::to_string(place) + "] ";
    for (const auto& [name, value] : valuesOf(child).fields)
      if (!isStamp(name)) values[below + name] = value;
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
    if (now != there.end() && now->second == value) continue;
    report.notTaken.push_back(
        {what, utf8(value), now == there.end() ? std::string() : utf8(now->second)});
  }
  return report;
}

}  // namespace workbench
