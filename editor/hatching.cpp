#include "editor/hatching.h"

#include <QtCore/QVector>
#include <QtGui/QPainter>

namespace editor {
namespace {

constexpr int Distance = 6;

// The lines of one direction whose foot lies at multiples of the distance, however the area lies.
QVector<QLineF> diagonals(const QRect& area, bool rising) {
  QVector<QLineF> lines;
  const int height = area.height();
  const int foot = rising ? area.left() + area.bottom() : area.left() - area.bottom();
  const int first = (foot / Distance - 1) * Distance - foot;
  for (int at = first - height; at <= area.width() + height; at += Distance) {
    const qreal x = area.left() + at;
    const qreal lean = rising ? height : -height;
    lines << QLineF(x, area.bottom() + 1, x + lean, area.bottom() + 1 - height);
  }
  return lines;
}

}  // namespace

void hatch(QPainter& painter, const QRect& area, const QColor& colour, Hatching hatching) {
  if (area.isEmpty()) return;
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 1));
  painter.drawLines(diagonals(area, true));
  if (hatching == Hatching::crossed) painter.drawLines(diagonals(area, false));
  painter.restore();
}

}  // namespace editor
