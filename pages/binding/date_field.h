#pragma once

#include <optional>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/time/date_time.h"

namespace lamp {

/// The masked date-time field: the controller's clock, or the activation date of a write.
class DateField {
 public:
  /// @p editId is the field's control in @p dialog, which must outlive this.
  DateField(XCBaseDlg& dialog, int editId) : dialog_(dialog), editId_(editId) {}

  /// Gives the edit its mask and shows the host's local time.
  void initialise();
  /// Shows a controller's stamp, 14 digits from the year to the second; anything else leaves the
  /// field as it is.
  void showStamp(const XCBasicString& stamp);
  /// Shows a stamp piece by piece: a piece beyond the end of a shorter one is empty, the separators
  /// stand regardless.
  void showStampPieces(const XCBasicString& stamp);

  /// The field's moment as the controller takes it. An invalid one shows text 38408, moves the
  /// focus to the field, selects its text, and gives none.
  std::optional<XCBasicString> checkedStamp();
  /// What checkedStamp would say of an invalid moment; empty for a valid one. Shows nothing.
  XCBasicString fault() const;

 private:
  XCBasicString stamp() const;

  XCBaseDlg& dialog_;
  int editId_;
};

/// The box with an activation date, and its controls.
host::LayoutItem activationBox(int groupId, int editId);
std::vector<host::ControlSpec> activationControls(int groupId, int editId);

/// "20240331023000" as "31/03/2024 02:30:00"; see DateField::showStampPieces.
XCBasicString stampAsDate(const XCBasicString& stamp);

}  // namespace lamp
