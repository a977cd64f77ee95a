#pragma once

#include <QtWidgets/QWidget>
#include <functional>
#include <optional>

#include "editor/renderers/year_grid.h"
#include "host/ui/controls/calendar_control.h"

namespace editor {

/// The twelve months of the year that a calendar control shows. Every painted day shows its number,
/// the colour of its day type and the type's sign, so that colours need not be told apart; days out
/// of use are hatched. Days are painted by clicking, by dragging over them, and with the keys:
/// arrows move, Home and End go to the ends of the month, the blank paints, and with Shift every
/// day between where a key left and where it arrived is painted.
class YearView : public QWidget {
 public:
  YearView(const XCCalendar& calendar, QWidget* parent);

  std::function<void(const XCDateTime&)> onPaint;
  std::function<void(int year)> onYear;

  /// Shows what became of the calendar.
  void refresh();

  /// The day that the keys work on.
  const XCDateTime& cursor() const { return cursor_; }
  YearGrid grid() const;
  /// Where the arrows to the year before and the year after stand.
  QRect yearArrow(int step) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QSize naturalDay() const;
  QSize sizeFor(const QSize& day) const;
  int barHeight() const;
  int typeWidth() const;
  void drawBar(QPainter& painter) const;
  void drawMonth(QPainter& painter, const YearGrid& grid, int month) const;
  void drawDay(QPainter& painter, const QRect& cell, const XCDateTime& day) const;
  void drawType(QPainter& painter, const QRect& box, const XCCalendar::DayType& type) const;
  void dragTo(const QPoint& point);
  void paintAt(const YearGrid& days, const QPoint& point);
  void paint(const XCDateTime& day);
  void moveCursor(const XCDateTime& to, bool paintOnTheWay);
  void setCursorDay(const XCDateTime& day);
  void keepCursorInYear();
  std::optional<XCDateTime> targetOf(int key) const;
  QString wordsFor(const XCDateTime& day) const;

  const XCCalendar& calendar_;
  XCDateTime cursor_;
  std::optional<XCDateTime> dragged_;
  std::optional<QPoint> draggedFrom_;
};

}  // namespace editor
