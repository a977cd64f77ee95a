#pragma once

#include <QtCore/QStringList>

class QWidget;

namespace support {

/// Everything that a person can read in a widget and below it, hidden pages too: captions, contents
/// as they are drawn, rows, tooltips.
QStringList shownTexts(const QWidget& widget);

}  // namespace support
