#include "editor/tour/journey.h"

namespace editor {
namespace {

// One line each: what is done, in the order in which it is done.

Tour::Step picture(const char* name) {
  return [name](Tour& tour) { tour.picture(name); };
}
Tour::Step click(const char* control) {
  return [control](Tour& tour) { tour.click(control); };
}
Tour::Step choose(const char* control, const char* item) {
  return [control, item](Tour& tour) { tour.choose(control, QString::fromUtf8(item)); };
}
Tour::Step type(const char* control, const char* text) {
  return [control, text](Tour& tour) { tour.type(control, QString::fromUtf8(text)); };
}
Tour::Step selectRows(const char* control, std::vector<int> rows) {
  return [control, rows = std::move(rows)](Tour& tour) { tour.selectRows(control, rows); };
}

}  // namespace

std::vector<Tour::Step> journey() {
  return {
      picture("main-window"),
      click("device"),
      picture("configuration-menu"),
      click("6358"),
      picture("general-settings"),
      choose("TimeZone", "Brasil"),
      picture("time-zone-chosen"),
      click("ok"),
      click("6512"),
      picture("node-table"),
      selectRows("6520", {1, 2, 4}),
      picture("three-nodes-selected"),
      type("6517", "Calle Mayor 12"),
      picture("reference-typed"),
      click("ok"),
      picture("menu-again"),
      click("ok"),
      picture("main-window-after"),
  };
}

}  // namespace editor
