#pragma once

#include <QtCore/QRect>
#include <QtGui/QColor>

class QPainter;

namespace editor {

enum class Hatching { rising, crossed };

/// Fills a rectangle with thin diagonal lines. They run on across rectangles side by side and are
/// drawn at the screen's own resolution, which a brush's pattern is not.
void hatch(QPainter& painter, const QRect& area, const QColor& colour, Hatching hatching);

}  // namespace editor
