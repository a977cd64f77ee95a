#include "editor/program_chart/night_chart.h"

#include <gtest/gtest.h>

#include <QtGui/QPalette>
#include <QtTest/QTest>
#include <set>

#include "editor/contrast.h"
#include "editor/tour/dark_palette.h"
#include "tests/support/texts.h"

namespace {

using editor::LampProgram;
using editor::NightSteps;
using editor::ProgramTimes;

const LampProgram Usual = {{{-1, 100}, {1350, 70}, {30, 40}, {330, 80}}};
const LampProgram Dimmer = {{{-1, 100}, {1350, 30}, {30, 10}, {330, 80}}};

class NightChart : public testing::Test {
 protected:
  NightChart() : chart_((support::texts(), nullptr)) {
    chart_.resize(480, 200);
    chart_.show();
    QCoreApplication::processEvents();
  }
  void show(std::initializer_list<LampProgram> programs) {
    editor::SelectedPrograms selected;
    selected.clear(ProgramTimes::clock);
    for (const LampProgram& program : programs) selected.add(program);
    selected.seal();
    chart_.setNight(NightSteps(selected));
  }
  QImage picture(qreal scale = 1) {
    QImage image(chart_.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    chart_.render(&image);
    return image;
  }
  static std::set<QRgb> coloursOf(const QImage& image) {
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) colours.insert(image.pixel(x, y));
    return colours;
  }

  editor::NightChart chart_;
};

/// Counts how often a widget paints.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
  int count = 0;
};

TEST_F(NightChart, TellsTheStepsInWords) {
  show({Usual});
  EXPECT_FALSE(chart_.accessibleName().isEmpty());
  for (const char* part : {"22:30", "70 %", "00:30", "40 %", "05:30", "80 %"})
    EXPECT_TRUE(chart_.accessibleDescription().contains(part)) << part;
}

TEST_F(NightChart, PaintsOnlyWhenTheNightDiffers) {
  show({Usual});
  QCoreApplication::processEvents();
  PaintCounter paints(chart_);
  show({Usual});
  QCoreApplication::processEvents();
  EXPECT_EQ(paints.count, 0);
  show({Dimmer});
  QCoreApplication::processEvents();
  EXPECT_EQ(paints.count, 1);
}

TEST_F(NightChart, ABandLooksDifferentInBlackAndWhiteToo) {
  const auto grey = [this] { return picture().convertToFormat(QImage::Format_Grayscale8); };
  show({Usual});
  const QImage one = grey();
  show({Usual, Dimmer});
  EXPECT_NE(grey(), one);
}

TEST_F(NightChart, IsDrawnAtTheResolutionOfTheScreen) {
  show({Usual, Dimmer});
  const QImage plain = picture(1);
  const QImage dense = picture(3);
  EXPECT_NE(dense.convertToFormat(QImage::Format_RGB32),
            plain.scaled(dense.size()).convertToFormat(QImage::Format_RGB32))
      << "not an enlarged picture";
}

TEST_F(NightChart, ItsColoursStandOutOnALightAndADarkDesktop) {
  for (const QPalette& palette : {QPalette(Qt::lightGray, Qt::white), editor::darkPalette()}) {
    chart_.setPalette(palette);
    show({Usual});
    const QColor ground = palette.color(QPalette::Base);
    qreal best = 0;
    for (const QRgb colour : coloursOf(picture()))
      best = std::max(best, editor::contrastBetween(QColor(colour), ground));
    EXPECT_GE(best, 4.5) << "texts and lines";
  }
}

TEST_F(NightChart, AHighlightThatIsHardToSeeGivesWayToTheTextColour) {
  QPalette palette(Qt::lightGray, Qt::white);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, Qt::black);
  palette.setColor(QPalette::Highlight, QColor(250, 250, 200));
  chart_.setPalette(palette);
  show({Usual});
  // The line of the first step, in its middle, between its ends and behind no number.
  const QImage image = picture();
  bool found = false;
  for (int y = 0; y < image.height() && !found; ++y)
    found = image.pixel(image.width() / 4, y) == QColor(Qt::black).rgb() &&
            image.pixel(image.width() / 4 + 3, y) == QColor(Qt::black).rgb();
  EXPECT_TRUE(found);
}

TEST_F(NightChart, PaintsAtEverySizeAndWithoutRows) {
  for (const QSize size : {QSize(1, 1), QSize(30, 20), QSize(2000, 40), QSize(60, 900)}) {
    chart_.resize(size);
    for (int rows = 0; rows < 3; ++rows) {
      if (rows == 0) show({});
      if (rows == 1) show({Usual});
      if (rows == 2) show({Usual, Dimmer});
      EXPECT_FALSE(picture().isNull());
    }
  }
}

}  // namespace
