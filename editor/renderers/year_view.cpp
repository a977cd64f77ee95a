#include "editor/renderers/year_view.h"

#include <QtGui/QAccessible>
#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QToolTip>
#include <algorithm>
#include <cstdlib>

#include "editor/contrast.h"
#include "editor/hatching.h"
#include "editor/images.h"
#include "editor/qt_text.h"
#include "editor/renderers/day_type_sign.h"

namespace editor {
namespace {

constexpr int Margin = 4;
constexpr int Months = 12;
constexpr int WeekdayLetters = 2;
// The size of a day type's sign, of the day's own.
constexpr qreal TypeScale = 0.75;
constexpr float HatchOpacity = 0.25F;
// How much lighter or darker than the day the ground of the sign is, in percent.
constexpr int GroundShade = 135;

}  // namespace

YearView::YearView(const XCCalendar& calendar, QWidget* parent)
    : QWidget(parent), calendar_(calendar) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAccessibleName(caption(host::TextId::Calendar));
}

int YearView::barHeight() const {
  return fontMetrics().height() * 3 / 2 + Margin;
}

// The room for the sign of a day type beside a day's number.
int YearView::typeWidth() const {
  return static_cast<int>(fontMetrics().horizontalAdvance("00") * TypeScale) + Margin / 2;
}

YearGrid YearView::grid() const {
  const QRect area = rect().adjusted(Margin, barHeight() + Margin, -Margin, -Margin);
  return {calendar_.ShownYear(), area, fontMetrics().height() + Margin, naturalDay()};
}

QRect YearView::yearArrow(int step) const {
  const int width = fontMetrics().horizontalAdvance("000000") + barHeight();
  const int left = rect().center().x() + (step < 0 ? -2 * width : width);
  return {left, 0, width, barHeight()};
}

QSize YearView::naturalDay() const {
  return {fontMetrics().horizontalAdvance("00") + typeWidth() + Margin,
          fontMetrics().height() + Margin};
}

QSize YearView::sizeFor(const QSize& day) const {
  constexpr int Columns = 4;
  constexpr int Rows = Months / Columns;
  const int title = fontMetrics().height() + Margin;
  return {Columns * YearGrid::Weekdays * day.width() + (Columns - 1) * YearGrid::Gap + 2 * Margin,
          barHeight() + Rows * (YearGrid::Lines * day.height() + title) +
              (Rows - 1) * YearGrid::Gap + 3 * Margin};
}

QSize YearView::sizeHint() const {
  return sizeFor(naturalDay());
}
QSize YearView::minimumSizeHint() const {
  return sizeFor({naturalDay().width() - Margin / 2, fontMetrics().height()});
}

// --- drawing

void YearView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawBar(painter);
  const YearGrid days = grid();
  for (int month = 1; month <= Months; ++month) drawMonth(painter, days, month);
}

void YearView::drawBar(QPainter& painter) const {
  QFont bold = font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * 1.2);
  painter.setFont(bold);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(QRect(0, 0, width(), barHeight()), Qt::AlignCenter,
                   QString::number(calendar_.ShownYear()));
  painter.setFont(font());
  for (const int step : {-1, 1}) {
    const int year = calendar_.ShownYear() + step;
    if (year < calendar_.MinYear() || year > calendar_.MaxYear()) continue;
    const QRect area = yearArrow(step);
    const int size = barHeight();
    QStyleOption option;
    option.initFrom(this);
    option.rect = QRect(step < 0 ? area.left() : area.right() - size + 1, area.top(), size, size)
                      .adjusted(Margin, Margin, -Margin, -Margin);
    style()->drawPrimitive(
        step < 0 ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight, &option,
        &painter, this);
    painter.drawText(
        step < 0 ? area.adjusted(size, 0, 0, 0) : area.adjusted(0, 0, -size, 0),
        step < 0 ? int(Qt::AlignVCenter | Qt::AlignLeft) : int(Qt::AlignVCenter | Qt::AlignRight),
        QString::number(year));
  }
}

void YearView::drawMonth(QPainter& painter, const YearGrid& days, int month) const {
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(days.titleOf(month), Qt::AlignHCenter | Qt::AlignTop,
                   qtText(calendar_.MonthName(month - 1)));
  painter.setFont(font());
  QColor faint = palette().color(QPalette::WindowText);
  faint.setAlphaF(0.65F);
  painter.setPen(faint);
  for (int weekday = 0; weekday < YearGrid::Weekdays; ++weekday)
    painter.drawText(days.weekdayOf(month, weekday), Qt::AlignCenter,
                     qtText(calendar_.WeekdayName(weekday)).left(WeekdayLetters));
  const int count = YearGrid::daysIn(days.year(), month);
  for (int day = 1; day <= count; ++day) {
    const XCDateTime date(days.year(), month, day);
    drawDay(painter, days.cellOf(date), date);
  }
}

void YearView::drawDay(QPainter& painter, const QRect& cell, const XCDateTime& day) const {
  const QRect box = cell.adjusted(0, 0, -1, -1);
  const XCCalendar::DayType* type = calendar_.TypeOf(day);
  const bool usable = isEnabled() && calendar_.IsEnabledDay(day);
  QRect number = box;
  QColor text = palette().color(QPalette::Text);
  if (!usable) {
    // Of the text's colour: the palette's own shades for lines vanish on a dark desktop.
    QColor lines = palette().color(QPalette::Text);
    lines.setAlphaF(HatchOpacity);
    hatch(painter, box, lines, Hatching::rising);
    text = palette().color(QPalette::Disabled, QPalette::Text);
  } else if (type != nullptr) {
    drawType(painter, box, *type);
    text = readableOn(qtColour(type->colour));
    number.adjust(0, 0, -typeWidth(), 0);
  } else {
    painter.fillRect(box, palette().color(QPalette::Base));
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(box);
  painter.setPen(text);
  painter.drawText(number, Qt::AlignCenter, QString::number(day.Day()));
  if (hasFocus() && day == cursor_) {
    // Two colours: one of them stands out from any day type.
    painter.setPen(QPen(palette().color(QPalette::Base), 3));
    painter.drawRect(box.adjusted(1, 1, -1, -1));
    painter.setPen(QPen(palette().color(QPalette::Text), 1));
    painter.drawRect(box.adjusted(1, 1, -1, -1));
  }
}

// The type's colour, and its sign at the right on a ground of its own, so that it is not read as a
// part of the day's number.
void YearView::drawType(QPainter& painter, const QRect& box,
                        const XCCalendar::DayType& type) const {
  const QColor colour = qtColour(type.colour);
  const QColor text = readableOn(colour);
  QRect sign = box;
  sign.setLeft(box.right() - typeWidth() + 1);
  painter.fillRect(box, colour);
  // Away from the text's colour: it is read even better there.
  painter.fillRect(sign,
                   text == Qt::black ? colour.lighter(GroundShade) : colour.darker(GroundShade));
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * TypeScale);
  painter.setFont(small);
  painter.setPen(text);
  painter.drawText(sign, Qt::AlignCenter, dayTypeSign(type));
  painter.setFont(font());
}

// --- mouse

void YearView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QPoint point = event->position().toPoint();
  for (const int step : {-1, 1})
    if (yearArrow(step).contains(point)) return onYear(calendar_.ShownYear() + step);
  dragged_.reset();
  draggedFrom_ = point;
  dragTo(point);
}

void YearView::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) && draggedFrom_) dragTo(event->position().toPoint());
}

void YearView::mouseReleaseEvent(QMouseEvent*) {
  dragged_.reset();
  draggedFrom_.reset();
}

// A quick pointer is seen here and there only: the days in between are on its way too.
void YearView::dragTo(const QPoint& point) {
  const YearGrid days = grid();
  const QPoint way = point - *draggedFrom_;
  const int pace = std::max(std::min(days.cellSize().width(), days.cellSize().height()) / 2, 1);
  const int steps = std::max(std::max(std::abs(way.x()), std::abs(way.y())) / pace, 1);
  const QPoint from = *draggedFrom_;
  draggedFrom_ = point;
  for (int step = 1; step <= steps; ++step) paintAt(days, from + way * step / steps);
}

// A day under the pointer is painted once, however long the pointer stays in it.
void YearView::paintAt(const YearGrid& days, const QPoint& point) {
  const std::optional<XCDateTime> day = days.dayAt(point);
  if (!day || dragged_ == day) return;
  dragged_ = *day;
  setCursorDay(*day);
  paint(*day);
}

void YearView::paint(const XCDateTime& day) {
  if (calendar_.IsEnabledDay(day)) onPaint(day);
}

// --- keyboard

void YearView::keepCursorInYear() {
  const int year = calendar_.ShownYear();
  if (cursor_.isValidDate() && cursor_.Year() == year) return;
  const auto first = calendar_.FirstEnabledDay();
  cursor_ = first && first->Year() == year ? *first : XCDateTime(year, 1, 1);
}

void YearView::setCursorDay(const XCDateTime& day) {
  cursor_ = day;
  refresh();
}

// Those who can't see the days are told which one the keys are on and what it has.
void YearView::refresh() {
  update();
  const QString words = cursor_.isValidDate() ? wordsFor(cursor_) : QString();
  if (words == accessibleDescription()) return;
  setAccessibleDescription(words);
  QAccessibleEvent told(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
}

void YearView::moveCursor(const XCDateTime& to, bool paintOnTheWay) {
  if (to.Year() < calendar_.MinYear() || to.Year() > calendar_.MaxYear()) return;
  const XCDateTime from = cursor_;
  if (to.Year() != calendar_.ShownYear()) onYear(to.Year());
  setCursorDay(to);
  if (!paintOnTheWay) return;
  const int step = from < to ? 1 : -1;
  // Where painting a day again clears it, the day that the way begins with keeps what it has.
  const XCCalendar::DayType* first = calendar_.TypeOf(from);
  if (first == nullptr || first->id != calendar_.SelType().id) paint(from);
  for (XCDateTime day = from; day != to;) paint(day = day.AddDays(step));
}

std::optional<XCDateTime> YearView::targetOf(int key) const {
  switch (key) {
    case Qt::Key_Left:
      return cursor_.AddDays(-1);
    case Qt::Key_Right:
      return cursor_.AddDays(1);
    case Qt::Key_Up:
      return cursor_.AddDays(-YearGrid::Weekdays);
    case Qt::Key_Down:
      return cursor_.AddDays(YearGrid::Weekdays);
    case Qt::Key_Home:
      return XCDateTime(cursor_.Year(), cursor_.Month(), 1);
    case Qt::Key_End:
      return XCDateTime(cursor_.Year(), cursor_.Month(),
                        YearGrid::daysIn(cursor_.Year(), cursor_.Month()));
    default:
      return std::nullopt;
  }
}

void YearView::keyPressEvent(QKeyEvent* event) {
  keepCursorInYear();
  if (const auto target = targetOf(event->key()))
    return moveCursor(*target, event->modifiers() & Qt::ShiftModifier);
  switch (event->key()) {
    case Qt::Key_Space:
      return paint(cursor_);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
      const int year = calendar_.ShownYear() + (event->key() == Qt::Key_PageUp ? -1 : 1);
      if (year >= calendar_.MinYear() && year <= calendar_.MaxYear()) onYear(year);
      return;
    }
    default:
      QWidget::keyPressEvent(event);
  }
}

void YearView::focusInEvent(QFocusEvent* event) {
  keepCursorInYear();
  QWidget::focusInEvent(event);
  refresh();
}

void YearView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

// "Thursday 10/04/2025", and below it the day type, or why the day can't be painted.
QString YearView::wordsFor(const XCDateTime& day) const {
  const int weekday = (day.DayOfWeek() + 5) % YearGrid::Weekdays;
  QString text =
      qtText(calendar_.WeekdayName(weekday)) + " " + qtText(day.GetDateTime(1, true, u"/", u":"));
  if (!calendar_.IsEnabledDay(day)) return text + "\n" + caption(host::TextId::DayOutOfUse);
  if (const XCCalendar::DayType* type = calendar_.TypeOf(day)) text += "\n" + dayTypeName(*type);
  return text;
}

bool YearView::event(QEvent* event) {
  // A view that is disabled tells why, as every control does.
  if (event->type() != QEvent::ToolTip || !isEnabled()) return QWidget::event(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const YearGrid days = grid();
  if (const auto day = days.dayAt(help.pos()))
    QToolTip::showText(help.globalPos(), wordsFor(*day), this, days.cellOf(*day));
  else
    QToolTip::hideText();
  return true;
}

}  // namespace editor
