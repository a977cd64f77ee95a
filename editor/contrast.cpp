#include "editor/contrast.h"

#include <algorithm>
#include <cmath>

namespace editor {
namespace {

// Relative luminance of sRGB.
qreal luminance(const QColor& colour) {
  const auto linear = [](qreal part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

}  // namespace

qreal contrastBetween(const QColor& first, const QColor& second) {
  const auto [dark, light] = std::minmax({luminance(first), luminance(second)});
  return (light + 0.05) / (dark + 0.05);
}

QColor readableOn(const QColor& colour) {
  return contrastBetween(colour, Qt::black) >= contrastBetween(colour, Qt::white) ? Qt::black
                                                                                  : Qt::white;
}

}  // namespace editor
