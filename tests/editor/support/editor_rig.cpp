#include "tests/editor/support/editor_rig.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

#include "host/services/setup.h"
#include "tests/support/texts.h"

namespace support {

EditorRig::EditorRig() : wnd_(window_), dialog_((texts(), &wnd_)) {
  new QVBoxLayout(&window_);
  XCVarnisSetup::Get().SetImageFolder(LAMP_IMAGES_FOLDER);
  host::installServices({.clockService = &clock_,
                         .idService = nullptr,
                         .channelService = nullptr,
                         .frontEndService = &frontEnd_,
                         .settingsService = &settings_});
}

EditorRig::~EditorRig() = default;

void EditorRig::open() {
  ASSERT_TRUE(dialog_.Create(&wnd_));
  window_.resize(900, 1400);
  window_.show();
  window_.activateWindow();
  settle();
}

void EditorRig::settle() {
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
}

editor::ControlRenderer& EditorRig::renderer(int id) {
  return *frontEnd_.bodyOf(dialog_)->renderer(id);
}

void EditorRig::fillRows(host::ListControl& list, std::size_t count) {
  const host::XmlName key("k");
  const host::XmlName even("even");
  std::vector<host::ListColumn> columns(2);
  columns[0].caption = u"Key";
  columns[0].attribute = key;
  columns[1].caption = u"Even";
  columns[1].attribute = even;
  list.setColumns(std::move(columns));
  XmlDocument::XmlNode& root = rows_.Create("rows");
  list.clearRows();
  for (std::size_t row = 0; row < count; ++row) {
    XmlDocument::XmlNode& element = root.NewChild("row");
    element.setAttribute(key, host::decimal(static_cast<std::int64_t>(row)));
    element.setAttribute(even, row % 2 == 0 ? u"yes" : u"no");
    list.addRow({&element});
  }
}

}  // namespace support
