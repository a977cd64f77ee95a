#include "editor/tour/dark_palette.h"

namespace editor {

QPalette darkPalette() {
  QPalette dark(QColor(0x31, 0x36, 0x3b), QColor(0x2a, 0x2e, 0x32));
  dark.setColor(QPalette::WindowText, QColor(0xfc, 0xfc, 0xfc));
  dark.setColor(QPalette::Text, QColor(0xfc, 0xfc, 0xfc));
  dark.setColor(QPalette::ButtonText, QColor(0xfc, 0xfc, 0xfc));
  dark.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
  dark.setColor(QPalette::AlternateBase, QColor(0x23, 0x26, 0x29));
  dark.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
  dark.setColor(QPalette::HighlightedText, QColor(0x1b, 0x1e, 0x20));
  dark.setColor(QPalette::PlaceholderText, QColor(0xa1, 0xa9, 0xb1));
  dark.setColor(QPalette::ToolTipBase, QColor(0x31, 0x36, 0x3b));
  dark.setColor(QPalette::ToolTipText, QColor(0xfc, 0xfc, 0xfc));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    dark.setColor(QPalette::Disabled, role, QColor(0x75, 0x7b, 0x80));
  return dark;
}

}  // namespace editor
