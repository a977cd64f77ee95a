#pragma once

#include "editor/qt_text.h"

namespace editor {

/// A caption for widgets that would take "&" as the mark of a mnemonic.
inline QString plainCaption(std::u16string_view text) {
  return qtText(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace editor
