#pragma once

#include "host/export.h"
#include "host/text/basic_string.h"

class XCBaseDlg;

/// One transfer between a dialog's controls and its members, in one direction.
class CDataExchange {
 public:
  CDataExchange(XCBaseDlg& dialog, bool saveAndValidate)
      : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}

  XCBaseDlg& m_pDlgWnd;
  /// True from the controls to the members, false the other way.
  const bool m_bSaveAndValidate;
};

/// Transfers the text of a control.
HOST_API void DDX_Text(CDataExchange& exchange, int controlId, XCBasicString& value);

/// Transfers a check box.
HOST_API void DDX_Check(CDataExchange& exchange, int controlId, bool& value);

/// Transfers the index of the radio button that is on among those that stand together in the table
/// from @p firstId on; -1 for none.
HOST_API void DDX_Radio(CDataExchange& exchange, int firstId, int& value);
