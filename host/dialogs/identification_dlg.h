#pragma once

#include "host/dialogs/base_dlg.h"

/// Asks for an identification: a name that may also be the name of a file. It takes what IsValidId
/// takes, blanks included, but no name that an operating system keeps for its devices; anything
/// else is answered with a message, and the dialog stays open.
class HOST_API CDlgIntroduceIdentification : public XCBaseDlg {
 public:
  /// @p proposed stands in the entry when the dialog opens.
  CDlgIntroduceIdentification(CWnd* parent, std::u16string_view title, std::u16string_view label,
                              std::u16string_view proposed = {});

  /// What was entered, after IDOK.
  const XCBasicString& Identification() const { return identification_; }

  bool OnInitDialog() override;
  void OnOK() override;
  void DoDataExchange(CDataExchange* exchange) override;
  void Layout() override;

 private:
  XCBasicString title_;
  XCBasicString label_;
  XCBasicString identification_;
};
