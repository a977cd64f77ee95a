#pragma once

#include <QtGui/QPalette>

namespace editor {

/// The colours of a dark desktop, for pictures on a machine that has none.
QPalette darkPalette();

}  // namespace editor
