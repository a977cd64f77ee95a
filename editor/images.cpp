#include "editor/images.h"

#include <QtCore/QFileInfo>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>

#include "editor/qt_text.h"
#include "host/services/setup.h"

namespace editor {
namespace {

constexpr int SwatchSize = 16;

}  // namespace

QIcon swatchIcon(const QColor& colour) {
  QIcon icon;
  for (const int scale : {1, 2}) {
    QPixmap pixmap(SwatchSize * scale, SwatchSize * scale);
    pixmap.fill(colour);
    QPainter painter(&pixmap);
    painter.setPen(QPen(colour.darker(160), scale));
    painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1));
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    // In a selected row too: a style would tint it otherwise.
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) icon.addPixmap(pixmap, mode);
  }
  return icon;
}

QIcon imageIcon(const std::string& name) {
  if (name.empty()) return {};
  if (name.front() == '#') return swatchIcon(QColor(QString::fromStdString(name)));
  const QString path = qtText(XCVarnisSetup::Get().getImageFilePath(XCBasicString::FromUtf8(name)));
  if (!QFileInfo::exists(path)) return {};
  // The variant is found by its name for the densest screens only; a screen may be plugged in
  // later.
  const QFileInfo file(path);
  const QString dense = file.path() + "/" + file.completeBaseName() + "@2x." + file.suffix();
  QIcon icon;
  // A selected row shows the image as it is: dyed in the colour of the row it would fade away.
  for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected})
    for (const QString& image : {path, dense})
      if (QFileInfo::exists(image)) icon.addFile(image, {}, mode);
  return icon;
}

QSize imageSize(const QIcon& icon) {
  QSize smallest;
  for (const QSize& size : icon.availableSizes())
    if (!smallest.isValid() || size.width() < smallest.width()) smallest = size;
  return smallest;
}

}  // namespace editor
