#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/extension_module.h"

// A dialog with one control of every kind, which notes what reaches its handlers.

namespace sample {

constexpr int Template = 9001;

struct Id {
  enum : int {
    Title = 6000,
    Box,
    Push,
    Other,
    RadioA,
    RadioB,
    RadioC,
    Gap,
    RadioD,
    Box1,
    Free,
    Limited,
    Digits,
    Masked,
    Secret,
    ReadOnly,
    Choice,
    Rows,
    OneRow,
    Ip,
    Year,
    Picture,
    Disabled,
    Hidden,
    Unnamed = host::privateId(0),
  };
};

/// Registers the template as long as it lives.
class Module {
 public:
  Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();

 private:
  host::ExtensionModule module_;
};

class Dialog : public XCBaseDlg {
 public:
  explicit Dialog(CWnd* parent = nullptr) : XCBaseDlg(Template, parent) {}

  bool OnInitDialog() override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;

  /// What was told, in its order: "click 6002", "change 6010", "key 6017 0".
  std::vector<std::string> log;
  /// Called in the handlers of the buttons, of OK and at the end of the initialisation, when set.
  std::function<void()> onPush;
  std::function<void()> onOther;
  std::function<bool()> onOk;
  std::function<void(Dialog&)> onInit;
  std::function<void(Dialog&)> onChange;

 private:
  void noteClick(int id);
  void noteChange(int id);
  void noteChoose(int id);
  void noteSelection(int id);
  void noteDoubleClick(int id, int row);
  void noteKey(int id, int key);
  void notePaint(int id);
  void notePosted(int parameter);
};

/// The message that Dialog notes when it is posted to it.
constexpr int Posted = 77;

}  // namespace sample
