#include "editor/program_chart/night_chart.h"

#include <QtGui/QAccessible>
#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>
#include <algorithm>

#include "editor/contrast.h"
#include "editor/hatching.h"
#include "editor/program_chart/night_words.h"
#include "editor/qt_text.h"

namespace editor {
namespace {

using host::TextId;

constexpr int Margin = 4;
constexpr int LineWidth = 2;
constexpr int Hour = 60;
constexpr int NaturalWidth = 420;
constexpr int LeastWidth = 200;
constexpr int LeastPlotLines = 4;  // of text, in the height between 0 and 100 %
constexpr int NaturalPlotLines = 6;
// Below this power its number stands above the line, otherwise in the area below it.
constexpr int LowPower = 30;
// Of a line against its ground, as for other graphics that carry a meaning.
constexpr qreal LeastContrast = 3;
// When the lamp switches on or off is the sun's business: the ends fade over this part of the axis.
constexpr qreal OpenEnd = 0.16;

QColor faded(QColor colour, float alpha) {
  colour.setAlphaF(alpha);
  return colour;
}

}  // namespace

NightChart::NightChart(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  setAccessibleName(caption(TextId::NightChart));
  setAccessibleDescription(nightWords(night_));
}

void NightChart::setNight(const NightSteps& night) {
  if (night == night_) return;
  night_ = night;
  setAccessibleDescription(nightWords(night_));
  QAccessibleEvent told(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
  update();
}

QSize NightChart::sizeHint() const {
  const int line = fontMetrics().height();
  return {NaturalWidth, (NaturalPlotLines + 4) * line + 3 * Margin};
}

QSize NightChart::minimumSizeHint() const {
  const int line = fontMetrics().height();
  return {LeastWidth, (LeastPlotLines + 4) * line + 3 * Margin};
}

// Above the area stand a caption and the numbers of the steps, below it the hours and a caption.
NightAxis NightChart::axis() const {
  const QFontMetrics metrics = fontMetrics();
  const int line = metrics.height();
  const QRect area =
      rect().adjusted(metrics.horizontalAdvance("100") + 2 * Margin, 2 * line + Margin,
                      -metrics.horizontalAdvance("00"), -(2 * line + Margin));
  return {area, std::max(night_.length(), 1)};
}

// The desktop's own colour for what is marked, where it can be told from the ground.
QColor NightChart::lineColour() const {
  const QColor ground = palette().color(QPalette::Base);
  const QColor wanted = palette().color(QPalette::Highlight);
  return contrastBetween(wanted, ground) >= LeastContrast ? wanted
                                                          : palette().color(QPalette::Text);
}

void NightChart::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect frame = rect().adjusted(0, 0, -1, -1);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawRect(frame);
  painter.setBrush(Qt::NoBrush);
  if (night_.empty()) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect().adjusted(Margin, Margin, -Margin, -Margin),
                     Qt::AlignCenter | Qt::TextWordWrap, caption(TextId::NightWithoutRows));
    return;
  }
  const NightAxis at = axis();
  drawScales(painter, at);
  drawAreas(painter, at);
  drawOpenEnds(painter, at);
  drawLines(painter, at);
  drawPowers(painter, at);
  drawStepNumbers(painter, at);
  drawCaptions(painter, at);
}

void NightChart::drawScales(QPainter& painter, const NightAxis& at) const {
  const QRect area = at.area();
  const int line = fontMetrics().height();
  for (const int power : {0, 25, 50, 75, 100}) {
    painter.setPen(faded(palette().color(QPalette::Text), power == 0 ? 0.6F : 0.15F));
    painter.drawLine(area.left(), at.y(power), area.right(), at.y(power));
    if (power % 50 != 0) continue;
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(0, at.y(power) - line / 2, area.left() - Margin, line),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(power));
  }
  drawHours(painter, at);
}

void NightChart::drawHours(QPainter& painter, const NightAxis& at) const {
  const int width = fontMetrics().horizontalAdvance("0000");
  const int hours = at.hoursBetweenLines(width);
  for (int minute = 0; minute <= night_.length(); minute += hours * Hour) {
    const int x = at.x(minute);
    painter.setPen(faded(palette().color(QPalette::Text), 0.15F));
    painter.drawLine(x, at.area().top(), x, at.area().bottom() + Margin);
    painter.setPen(palette().color(QPalette::Text));
    const bool clock = night_.times() == ProgramTimes::clock;
    const int hour = (clock ? NightSteps::clockAt(minute) : minute) / Hour;
    painter.drawText(
        QRect(x - width, at.area().bottom() + Margin, 2 * width, fontMetrics().height()),
        Qt::AlignHCenter | Qt::AlignTop, QString::number(hour));
  }
}

// What the axes measure; and, where there is something to say, what the hatching means or which
// value is missing.
void NightChart::drawCaptions(QPainter& painter, const NightAxis& at) const {
  painter.setPen(palette().color(QPalette::Text));
  const QRect top = rect().adjusted(Margin, Margin / 2, -Margin, 0);
  const QString power = caption(TextId::Power) + " (%)";
  painter.drawText(top, Qt::AlignLeft | Qt::AlignTop, power);
  const bool clock = night_.times() == ProgramTimes::clock;
  painter.drawText(QRect(at.area().left(), rect().bottom() - fontMetrics().height() - Margin / 2,
                         at.area().width(), fontMetrics().height()),
                   Qt::AlignHCenter | Qt::AlignBottom,
                   caption(clock ? TextId::NightByTheClock : TextId::NightSinceSwitchOn));
  const QString remark = night_.hasUnusable() ? unusableWords(night_)
                         : night_.differs()   ? caption(TextId::NightDiffers)
                                              : QString();
  const int room = top.width() - fontMetrics().horizontalAdvance(power) - 4 * Margin;
  QFont italic = font();
  italic.setItalic(true);
  painter.setFont(italic);
  painter.drawText(top, Qt::AlignRight | Qt::AlignTop,
                   QFontMetrics(italic).elidedText(remark, Qt::ElideRight, room));
  painter.setFont(font());
}

void NightChart::drawAreas(QPainter& painter, const NightAxis& at) const {
  for (const NightSpan& span : night_.spans()) {
    const int left = at.x(span.from);
    const int right = at.x(span.to);
    if (!span.power) {
      hatch(painter, QRect(QPoint(left, at.y(100)), QPoint(right, at.y(0))),
            faded(palette().color(QPalette::Text), 0.2F), Hatching::crossed);
      continue;
    }
    const QRect sure(QPoint(left, at.y(span.power->least)), QPoint(right - 1, at.y(0)));
    painter.fillRect(sure, faded(lineColour(), 0.25F));
    if (span.power->isOne()) continue;
    hatch(painter, QRect(QPoint(left, at.y(span.power->most)), sure.topRight()), lineColour(),
          Hatching::rising);
  }
}

void NightChart::drawOpenEnds(QPainter& painter, const NightAxis& at) const {
  const QRect area = at.area().adjusted(0, 0, 1, 0);
  const QColor ground = palette().color(QPalette::Base);
  QLinearGradient cover(area.topLeft(), area.topRight());
  if (night_.times() == ProgramTimes::clock) {
    cover.setColorAt(0, faded(ground, 0.9F));
    cover.setColorAt(OpenEnd, faded(ground, 0));
  }
  cover.setColorAt(1 - OpenEnd, faded(ground, 0));
  cover.setColorAt(1, faded(ground, 0.9F));
  painter.fillRect(area, cover);
}

// The least and the most of each part, joined where parts touch: one line where rows agree.
void NightChart::drawLines(QPainter& painter, const NightAxis& at) const {
  painter.setPen(QPen(lineColour(), LineWidth, Qt::SolidLine, Qt::SquareCap));
  const NightSpan* before = nullptr;
  for (const NightSpan& span : night_.spans()) {
    if (!span.power) {
      before = nullptr;
      continue;
    }
    for (const int power : {span.power->least, span.power->most})
      painter.drawLine(at.x(span.from), at.y(power), at.x(span.to), at.y(power));
    if (before != nullptr) {
      painter.drawLine(at.x(span.from), at.y(before->power->least), at.x(span.from),
                       at.y(span.power->least));
      painter.drawLine(at.x(span.from), at.y(before->power->most), at.x(span.from),
                       at.y(span.power->most));
    }
    before = &span;
  }
}

// Whether a band has room for its numbers.
bool NightChart::isHigh(const NightAxis& at, const ValueRange& power) const {
  return at.y(power.least) - at.y(power.most) > fontMetrics().height() + LineWidth;
}

// The top of the numbers of a power: in the middle of a band, where they need a ground of their
// own, and else in the area below the line, or above it where the area is low.
int NightChart::placeOfPower(const NightAxis& at, const ValueRange& power) const {
  const int height = fontMetrics().height();
  if (isHigh(at, power)) return (at.y(power.least) + at.y(power.most) - height) / 2;
  if (power.least < LowPower) return at.y(power.most) - height - LineWidth;
  return at.y(power.least) + LineWidth;
}

void NightChart::drawPowers(QPainter& painter, const NightAxis& at) const {
  const QFontMetrics metrics = fontMetrics();
  for (const NightSpan& span : night_.spans()) {
    if (!span.power) continue;
    const QString text = span.power->isOne()
                             ? QString::number(span.power->least)
                             : QString("%1–%2").arg(span.power->least).arg(span.power->most);
    const int width = metrics.horizontalAdvance(text) + Margin;
    if (at.x(span.to) - at.x(span.from) < width + LineWidth) continue;
    const int centre = (at.x(span.from) + at.x(span.to)) / 2;
    const QRect box(centre - width / 2, placeOfPower(at, *span.power), width, metrics.height());
    if (isHigh(at, *span.power))
      painter.fillRect(box, faded(palette().color(QPalette::Base), 0.85F));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(box, Qt::AlignCenter, text);
  }
}

// The number of each step stands above its start, like a flag on a pole. Steps that begin at the
// same place have their numbers side by side.
void NightChart::drawStepNumbers(QPainter& painter, const NightAxis& at) const {
  const int size = fontMetrics().height();
  std::vector<std::pair<int, int>> places;
  for (int number = 1; number <= ProgramSteps; ++number)
    if (const auto& start = night_.step(number).start)
      places.emplace_back(at.x(start->least), number);
  std::sort(places.begin(), places.end());
  int free = 0;
  for (const auto& [x, number] : places) {
    const QRect flag(std::max(free, x), at.area().top() - size, size - 2, size - 1);
    painter.setPen(faded(palette().color(QPalette::Text), 0.6F));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(flag.adjusted(0, 0, -1, -1));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(flag, Qt::AlignCenter, QString::number(number));
    free = flag.right() + 2;
  }
  painter.setBrush(Qt::NoBrush);
}

bool NightChart::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const NightAxis at = axis();
  if (night_.empty())
    QToolTip::showText(help.globalPos(), caption(TextId::NightWithoutRows), this);
  else
    QToolTip::showText(
        help.globalPos(),
        momentWords(night_, at.minuteAt(help.pos().x())) + "\n\n" + nightWords(night_), this);
  return true;
}

}  // namespace editor
