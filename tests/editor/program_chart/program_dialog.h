#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/extension_module.h"

// A dialog with a list of dimming programs and the edits of one below it, as the pages have them.

namespace program_dialog {

constexpr int Template = 9002;

struct Id {
  enum : int { Nodes = 6000, FirstField, LastField = FirstField + 7 };
};

/// The edits stand in the order of the columns behind the first: time and power of each step.
constexpr int timeEdit(int step) {
  return Id::FirstField + 2 * (step - 1);
}
constexpr int powerEdit(int step) {
  return timeEdit(step) + 1;
}

/// Registers the template as long as it lives. @p className and the name of the list decide which
/// pane the dialog gets.
class Module {
 public:
  explicit Module(const char* className, const char* list = "nodes");
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();

 private:
  host::ExtensionModule module_;
};

class Dialog : public XCBaseDlg {
 public:
  /// @p clock for edits with the mask of a clock.
  explicit Dialog(bool clock) : XCBaseDlg(Template, nullptr), clock_(clock) {}

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  host::ListControl& nodes() const { return List(Id::Nodes); }
  /// Appends a row with the texts of its cells: "time 1", "power 1" and so on.
  XmlDocument::XmlNode& addRow(const std::array<const char16_t*, 8>& cells);
  static host::XmlName attribute(int field);

 private:
  void onSelection();
  void onChange(int editId);

  bool clock_;
  bool filling_ = false;
  XmlDocument rows_;
};

}  // namespace program_dialog
