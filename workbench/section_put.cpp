#include "workbench/section_put.h"

#include <algorithm>

#include "workbench/task_put.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

const host::XmlName Line("Dir");
const host::XmlName On("On");
const host::XmlName Off("Off");

// "output3" for <Output Dir="3">, as the controls of its line begin; empty for another element.
std::string lineName(const Node& element) {
  if (!element.hasAttribute(Line)) return {};
  std::string name(element.Tag());
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return name + element.getAttribute(Line).ToUtf8();
}

// The page shows two attributes as one drop-down list: on, off, or neither by hand.
std::u16string modeOf(const Node& output) {
  if (output.attribute(On) == u"Y") return u"N";
  return output.attribute(Off) == u"Y" ? u"F" : u"A";
}

void addLines(const Node& section, PageValues::Row& fields) {
  for (const Node& child : section.Children()) {
    const std::string line = lineName(child);
    if (line.empty()) continue;
    for (const auto& [name, value] : valuesOf(child).fields) fields[line + "." + name] = value;
    if (child.hasAttribute(On) || child.hasAttribute(Off)) fields[line + ".mode"] = modeOf(child);
  }
}

}  // namespace

PutReport putSection(XCBaseDlg& page, const Node& section) {
  PageValues values = valuesOf(section);
  addLines(section, values.fields);
  values.tasks = tasksIn(section);
  return putValues(page, values);
}

}  // namespace workbench
