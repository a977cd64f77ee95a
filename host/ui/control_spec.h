#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/resources/text_id.h"

namespace host {

enum class ControlKind { label, group, button, radio, check, edit, combo, list, ip, year, image };

/// Ids from here on are private to a dialog: the control is known outside by its name alone.
constexpr int FirstPrivateId = 0x10000;
constexpr int privateId(int index) {
  return FirstPrivateId + index;
}

constexpr int IdOk = 1;
constexpr int IdCancel = 2;

/// One row of a dialog's control table. Rows stand in tab order.
struct ControlSpec {
  int id = 0;
  std::string name;  ///< unique in its dialog
  ControlKind kind = ControlKind::label;
  TextId text = TextId::None;
  std::string image = {};   ///< file name in the image folder
  int limit = 0;            ///< most characters of an edit, 0 for no limit
  bool digitsOnly = false;  ///< of an edit
  bool password = false;    ///< of an edit: shown masked
  bool readOnly = false;    ///< of an edit
  bool enabled = true;
  bool visible = true;
  bool multiSelect = false;  ///< of a list
};

/// What the host needs to build a dialog: its number, the class that shows it, its table.
struct DialogTemplate {
  int number = 0;
  std::string className;
  std::string title;  ///< until the dialog sets its own
  std::vector<ControlSpec> controls;
  /// Whether a front end lets nobody make the dialog smaller than it was when it opened.
  bool openingSizeIsLeast = false;
};

// Rows of a table, one function per kind.

inline ControlSpec label(int id, std::string name, TextId text = TextId::None) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::label, .text = text};
}
inline ControlSpec group(int id, std::string name, TextId text = TextId::None) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::group, .text = text};
}
inline ControlSpec button(int id, std::string name, TextId text = TextId::None,
                          std::string image = {}) {
  return {.id = id,
          .name = std::move(name),
          .kind = ControlKind::button,
          .text = text,
          .image = std::move(image)};
}
inline ControlSpec okButton(TextId text = TextId::Ok, std::string image = "OK-16.png") {
  return button(IdOk, "ok", text, std::move(image));
}
inline ControlSpec cancelButton() {
  return button(IdCancel, "cancel", TextId::Cancel, "CANCEL-16.png");
}
inline ControlSpec radio(int id, std::string name, TextId text = TextId::None) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::radio, .text = text};
}
inline ControlSpec check(int id, std::string name, TextId text = TextId::None) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::check, .text = text};
}
inline ControlSpec edit(int id, std::string name, int limit = 0) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::edit, .limit = limit};
}
inline ControlSpec digitsEdit(int id, std::string name, int limit = 0) {
  return {.id = id,
          .name = std::move(name),
          .kind = ControlKind::edit,
          .limit = limit,
          .digitsOnly = true};
}
inline ControlSpec passwordEdit(int id, std::string name, int limit = 0) {
  return {.id = id,
          .name = std::move(name),
          .kind = ControlKind::edit,
          .limit = limit,
          .password = true};
}
inline ControlSpec readOnlyEdit(int id, std::string name) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::edit, .readOnly = true};
}
inline ControlSpec combo(int id, std::string name) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::combo};
}
/// A list in which several rows may be selected at once.
inline ControlSpec list(int id, std::string name) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::list, .multiSelect = true};
}
inline ControlSpec singleSelectList(int id, std::string name) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::list};
}
inline ControlSpec ipAddress(int id, std::string name) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::ip};
}
inline ControlSpec year(int id, std::string name) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::year};
}
inline ControlSpec image(int id, std::string name, std::string file) {
  return {.id = id, .name = std::move(name), .kind = ControlKind::image, .image = std::move(file)};
}
/// The same row, disabled or hidden until the dialog says otherwise.
inline ControlSpec disabled(ControlSpec spec) {
  spec.enabled = false;
  return spec;
}
inline ControlSpec hidden(ControlSpec spec) {
  spec.visible = false;
  return spec;
}

}  // namespace host
