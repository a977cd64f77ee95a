#pragma once

#include <QtWidgets/QWidget>

#include "editor/program_chart/night_axis.h"
#include "editor/program_chart/night_steps.h"

namespace editor {

/// The power over the night as a chart of steps. Where rows differ, a hatched band lies between the
/// least and the most; powers stand at the steps as numbers, so that nothing is told by colour
/// alone. Everything is drawn from the palette and the font, at the screen's own resolution.
class NightChart : public QWidget {
 public:
  explicit NightChart(QWidget* parent);

  /// Shows another night; repaints only when it differs from the one before.
  void setNight(const NightSteps& night);
  const NightSteps& night() const { return night_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  NightAxis axis() const;
  void drawScales(QPainter& painter, const NightAxis& axis) const;
  void drawHours(QPainter& painter, const NightAxis& axis) const;
  void drawCaptions(QPainter& painter, const NightAxis& axis) const;
  void drawAreas(QPainter& painter, const NightAxis& axis) const;
  void drawLines(QPainter& painter, const NightAxis& axis) const;
  void drawPowers(QPainter& painter, const NightAxis& axis) const;
  bool isHigh(const NightAxis& axis, const ValueRange& power) const;
  int placeOfPower(const NightAxis& axis, const ValueRange& power) const;
  void drawStepNumbers(QPainter& painter, const NightAxis& axis) const;
  void drawOpenEnds(QPainter& painter, const NightAxis& axis) const;
  QColor lineColour() const;

  NightSteps night_;
};

}  // namespace editor
