#pragma once

#include <vector>

#include "exchange/export.h"
#include "host/dialogs/base_dlg.h"

/// The controller's own network settings. It shows the general section that the caller has read,
/// sends what the user changed, and leaves the sent element in the caller's document.
class ZEL_EXPORT XCDlgAdvancedCfgZelLampManager : public XCBaseDlg {
 public:
  /// @p doc holds the reply and takes the request; it is the caller's and must outlive the dialog.
  /// @p uriParams addresses the controller, as the caller's own commands do.
  XCDlgAdvancedCfgZelLampManager(CWnd* parent, XmlDocument* doc, XCBasicString uriParams);
  ~XCDlgAdvancedCfgZelLampManager() override;

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;
  void DoDataExchange(CDataExchange* exchange) override;
  void Layout() override;

  /// Fills the controls from the general section and keeps what was loaded.
  void Initialize();
  /// Whether no required field is empty; shows it and puts the focus on the first one that is.
  /// Neither addresses nor the range of the port are checked: deliberate.
  bool IsValidCfg();
  /// Makes the document the write of what changed and sends it, when there is anything to send.
  bool Send();
  /// Sends the document; a failure is shown with Retry and Cancel.
  bool WriteCfg();

  /// Appends the parameters that the caller gave.
  bool addUriParams(XCBasicString& uri, bool first) override;

 private:
  XmlDocument* document_;
  XCBasicString uriParams_;
  // By field, in the order of the table. A list without a chosen entry counts as unchanged.
  std::vector<XCBasicString> loaded_;
  std::vector<XCBasicString> current_;
};
