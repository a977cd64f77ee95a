#pragma once

#include "host/dialogs/base_dlg.h"

namespace test_plugin {

/// A dialog with every kind of control. Its label "log" names the notices in their order.
class KindsDialog : public XCBaseDlg {
 public:
  static constexpr int Number = 9001;
  static host::DialogTemplate Template();

  explicit KindsDialog(CWnd* parent) : XCBaseDlg(Number, parent) {}

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  bool addUriParams(XCBasicString& uri, bool first) override;

 private:
  void note(std::u16string_view what);
  void OnEdit(int id);
  void OnClickBox(int id);
  void OnChosen(int id);
  void OnRows(int id);
  void OnRow(int id, int row);
  void OnListKey(int id, int key);
  void OnPainted(int id);
  void OnMessage();
  void OnQuestion();
  void OnRetry();
  void OnFile();
  void OnNested();
  void OnTwoNested();
  void OnRead();
  void OnPost();
  void OnPosted(int parameter);
  void OnFill();
  void fillList();
  void fillYear();

  XmlDocument rows_;
};

}  // namespace test_plugin
