#pragma once

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <string>

#include "host/ui/colour.h"

namespace editor {

/// The image with a name in the host's image folder, with its variant for dense screens where one
/// lies beside it. A name "#RRGGBB" is a swatch of that colour. A null icon for an empty name and
/// for a file that is not there or is no image.
QIcon imageIcon(const std::string& name);

/// A box of a colour, which keeps it in whatever state it is shown.
QIcon swatchIcon(const QColor& colour);

/// The size in which the image was drawn, in device-independent pixels.
QSize imageSize(const QIcon& icon);

inline QColor qtColour(host::Colour colour) {
  return {colour.red, colour.green, colour.blue};
}

}  // namespace editor
