#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/xml/xml_document.h"

namespace workbench {

/// Values of a section by the names of their attributes: those of the section itself, and those of
/// its rows by the row's identity (its `Id` or `nodeId`).
struct PageValues {
  using Row = std::map<std::string, std::u16string>;
  Row fields;
  std::map<std::u16string, Row> rows;
  /// All periodic tasks, as a section of their own in UTF-8; empty where they are not meant.
  std::string tasks = {};

  bool empty() const { return fields.empty() && rows.empty() && tasks.empty(); }
  bool operator==(const PageValues&) const = default;
};

/// The element of a section in a request or in a reply; null when the document lacks it.
const XmlDocument::XmlNode* sectionElement(const XmlDocument& document, const std::string& section);

/// The values of a section as it is read or as it is written: attributes that a written row has in
/// a child of its own count as the row's, and the times of a program are joined as RowValue says.
/// Masked passwords are left out, tasks too.
PageValues valuesOf(const XmlDocument::XmlNode& section);

/// The identity of a row's element, empty when it has none.
std::u16string rowKey(const XmlDocument::XmlNode& row);

/// What became of values that were put into a page.
struct PutReport {
  std::size_t put = 0;               ///< values that the page took
  std::size_t same = 0;              ///< values that the page had already
  std::vector<std::string> refused;  ///< "TimeZone" or "1: Reference", with the reason behind it
  std::size_t known() const { return put + same + refused.size(); }
};

/// Types @p values into an open page, by the rules that hold for its user: fields whose control has
/// the name of the attribute, rows of its lists through the edit with the attribute's name, and the
/// tasks as putTasks() does.
/// Nothing is sent. The selection of the lists is as before in the end.
PutReport putValues(XCBaseDlg& page, const PageValues& values);

}  // namespace workbench
