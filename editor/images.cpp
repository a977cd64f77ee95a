#include "editor/images.h"

#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <cstdio>
#include <set>

#include "host/services/files.h"
#include "host/services/setup.h"

namespace editor {
namespace {

constexpr int SwatchSize = 16;
constexpr std::size_t LargestImage = 1024 * 1024;

void tellOnce(const std::filesystem::path& file, const std::string& cause) {
  static std::set<std::filesystem::path> told;
  if (told.insert(file).second)
    std::fprintf(stderr, "lamp-editor: the image %s can't be shown: %s\n", file.c_str(),
                 cause.c_str());
}

// Read here and not by the toolkit, which would wait for a pipe. Null when there is none, and when
// it can't be shown, which is told.
QPixmap pixmapOf(const std::filesystem::path& file) {
  QPixmap pixmap;
  std::string bytes;
  std::string cause;
  if (!host::fileSystem().exists(file)) return pixmap;
  if (!host::readFile(file, LargestImage, bytes, cause))
    tellOnce(file, cause);
  else if (!pixmap.loadFromData(QByteArray::fromStdString(bytes)))
    tellOnce(file, "It is no image");
  return pixmap;
}

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
  const std::filesystem::path file =
      XCVarnisSetup::Get().getImageFilePath(XCBasicString::FromUtf8(name)).str();
  std::filesystem::path dense = file;
  dense.replace_filename(file.stem().concat("@2x").concat(file.extension().string()));
  // A screen for the second may be plugged in later.
  QPixmap images[] = {pixmapOf(file), pixmapOf(dense)};
  if (images[0].isNull()) return {};
  images[1].setDevicePixelRatio(2);
  QIcon icon;
  // A selected row shows the image as it is: dyed in the colour of the row it would fade away.
  for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected})
    for (const QPixmap& image : images)
      if (!image.isNull()) icon.addPixmap(image, mode);
  return icon;
}

QSize imageSize(const QIcon& icon) {
  QSize smallest;
  for (const QSize& size : icon.availableSizes())
    if (!smallest.isValid() || size.width() < smallest.width()) smallest = size;
  return smallest;
}

}  // namespace editor
