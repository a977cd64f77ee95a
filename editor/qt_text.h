#pragma once

#include <QtCore/QString>
#include <string_view>

#include "host/resources/texts.h"
#include "host/text/basic_string.h"

namespace editor {

/// A copy of the host's text.
inline QString qtText(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

/// The text with a number in the language in force.
inline QString caption(host::TextId id) {
  return qtText(XCLoadString(id));
}

/// The text with a number, its placeholders filled.
template <class... Arguments>
QString caption(host::TextId id, const Arguments&... arguments) {
  return qtText(XCBasicString::Format(XCLoadString(id), arguments...));
}

/// The same characters as the host sees them. Valid as long as @p text.
inline std::u16string_view hostText(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace editor
