#pragma once

#include <QtGui/QColor>

namespace editor {

/// The contrast ratio of two colours by WCAG 2: from 1, equal, to 21, black and white.
qreal contrastBetween(const QColor& first, const QColor& second);

/// The one of black and white that is read better on a colour. Its contrast is at least 4.5.
QColor readableOn(const QColor& colour);

}  // namespace editor
