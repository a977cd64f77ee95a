#include "editor/renderers/year_view.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QToolTip>
#include <algorithm>

#include "editor/contrast.h"
#include "editor/images.h"
#include "editor/qt_text.h"

namespace editor {
namespace {

constexpr int Margin = 4;
constexpr int Months = 12;
constexpr int WeekdayLetters = 2;
// Day types are told by one character; their number is drawn in this part of the day's own size.
constexpr qreal TypeScale = 0.72;

}  // namespace

YearView::YearView(const XCCalendar& calendar, QWidget* parent)
    : QWidget(parent), calendar_(calendar) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMouseTracking(false);
  setAttribute(Qt::WA_OpaquePaintEvent, false);
}

int YearView::barHeight() const {
  return fontMetrics().height() * 3 / 2 + Margin;
}

// The room for the identifier of a day type beside a day's number.
int YearView::typeWidth() const {
  return static_cast<int>(fontMetrics().horizontalAdvance("0") * TypeScale) + Margin;
}

YearGrid YearView::grid() const {
  const QRect area = rect().adjusted(Margin, barHeight() + Margin, -Margin, -Margin);
  return {calendar_.ShownYear(), area, fontMetrics().height() + Margin};
}

QRect YearView::yearArrow(int step) const {
  const int width = fontMetrics().horizontalAdvance("000000") + barHeight();
  const int left = rect().center().x() + (step < 0 ? -2 * width : width);
  return {left, 0, width, barHeight()};
}

QSize YearView::sizeFor(int cellHeight) const {
  constexpr int Columns = 4;
  constexpr int Rows = Months / Columns;
  const int cellWidth = fontMetrics().horizontalAdvance("00") + typeWidth() + 2 * Margin;
  const int title = fontMetrics().height() + Margin;
  return {Columns * YearGrid::Weekdays * cellWidth + (Columns - 1) * YearGrid::Gap + 2 * Margin,
          barHeight() + Rows * (YearGrid::Lines * cellHeight + title) + (Rows - 1) * YearGrid::Gap +
              3 * Margin};
}

QSize YearView::sizeHint() const {
  return sizeFor(fontMetrics().height() + Margin);
}
QSize YearView::minimumSizeHint() const {
  return sizeFor(fontMetrics().height());
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
  QColor text = palette().color(QPalette::Text);
  if (!usable) {
    // Out of use: no colour, crossed by thin lines, its number faint.
    QColor lines = palette().color(QPalette::Mid);
    painter.fillRect(box, QBrush(lines, Qt::BDiagPattern));
    text = palette().color(QPalette::Disabled, QPalette::Text);
  } else if (type != nullptr) {
    painter.fillRect(box, qtColour(type->colour));
    text = readableOn(qtColour(type->colour));
  } else {
    painter.fillRect(box, palette().color(QPalette::Base));
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(box);
  painter.setPen(text);
  const bool numbered = usable && type != nullptr && !type->id.IsEmpty();
  const QRect number = numbered ? box.adjusted(1, 0, -typeWidth(), 0) : box;
  painter.drawText(number, Qt::AlignCenter, QString::number(day.Day()));
  if (numbered) {
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * TypeScale);
    painter.setFont(small);
    painter.drawText(box.adjusted(0, 0, -2, -1), Qt::AlignRight | Qt::AlignBottom,
                     qtText(type->id));
    painter.setFont(font());
  }
  if (hasFocus() && day == cursor_) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(box.adjusted(1, 1, -1, -1));
  }
}

// --- mouse

void YearView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QPoint point = event->position().toPoint();
  for (const int step : {-1, 1})
    if (yearArrow(step).contains(point)) return onYear(calendar_.ShownYear() + step);
  dragged_.reset();
  drag(point);
}

void YearView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) drag(event->position().toPoint());
}

void YearView::mouseReleaseEvent(QMouseEvent*) {
  dragged_.reset();
}

// A day under the pointer is painted once, however often the pointer moves within it.
void YearView::drag(const QPoint& point) {
  const std::optional<XCDateTime> day = grid().dayAt(point);
  if (!day || dragged_ == day) return;
  dragged_ = cursor_ = *day;
  if (calendar_.IsEnabledDay(*day)) onPaint(*day);
  update();
}

// --- keyboard

void YearView::keepCursorInYear() {
  const int year = calendar_.ShownYear();
  if (cursor_.isValidDate() && cursor_.Year() == year) return;
  const auto first = calendar_.FirstEnabledDay();
  cursor_ = first && first->Year() == year ? *first : XCDateTime(year, 1, 1);
}

void YearView::moveCursor(std::int64_t days, bool paint) {
  const XCDateTime next = cursor_.AddDays(days);
  if (next.Year() < calendar_.MinYear() || next.Year() > calendar_.MaxYear()) return;
  if (next.Year() != calendar_.ShownYear()) onYear(next.Year());
  cursor_ = next;
  if (paint && calendar_.IsEnabledDay(next)) onPaint(next);
  update();
}

void YearView::keyPressEvent(QKeyEvent* event) {
  keepCursorInYear();
  const bool paint = event->modifiers() & Qt::ShiftModifier;
  switch (event->key()) {
    case Qt::Key_Left:
      return moveCursor(-1, paint);
    case Qt::Key_Right:
      return moveCursor(1, paint);
    case Qt::Key_Up:
      return moveCursor(-YearGrid::Weekdays, paint);
    case Qt::Key_Down:
      return moveCursor(YearGrid::Weekdays, paint);
    case Qt::Key_Space:
      if (calendar_.IsEnabledDay(cursor_)) onPaint(cursor_);
      return update();
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
  update();
}

void YearView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

QString YearView::toolTipOf(const XCDateTime& day) const {
  QString text = qtText(day.GetDateTime(1, true, u"/", u":"));
  if (const XCCalendar::DayType* type = calendar_.TypeOf(day)) {
    const QString name = qtText(type->name);
    text += "\n" + caption(host::TextId::DayType) + " " + qtText(type->id);
    if (!name.isEmpty() && name != qtText(type->id)) text += " · " + name;
  }
  if (!calendar_.IsEnabledDay(day)) text += "\n" + caption(host::TextId::DayOutOfUse);
  return text;
}

bool YearView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const YearGrid days = grid();
  if (const auto day = days.dayAt(help.pos()))
    QToolTip::showText(help.globalPos(), toolTipOf(*day), this, days.cellOf(*day));
  else
    QToolTip::hideText();
  return true;
}

}  // namespace editor
