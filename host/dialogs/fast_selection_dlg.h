#pragma once

#include <array>

#include "host/dialogs/base_dlg.h"
#include "host/xml/xml_document.h"

/// Chooses days of a year by their month and weekday, and the day type that they get.
class HOST_API CDlgFastSelection : public XCBaseDlg {
 public:
  /// @p dayTypes has a child for each day type, with the children "name" and "color" (six
  /// hexadecimal digits: red, green, blue); it must outlive the dialog. Of the months of @p year
  /// only those from @p firstMonth to @p lastMonth (1 = January) are offered. The day type with the
  /// index
  /// @p chosen is chosen to begin with.
  CDlgFastSelection(CWnd* parent, const XmlDocument& dayTypes, int year, int firstMonth,
                    int lastMonth, int chosen = -1);

  /// The months chosen, January as bit 0.
  unsigned MonthMask() const { return months_; }
  /// The weekdays chosen, Monday as bit 0.
  unsigned WeekdayMask() const { return weekdays_; }
  /// The index of the day type, -1 for none.
  int DayTypeIndex() const { return dayType_; }

  bool OnInitDialog() override;
  void DoDataExchange(CDataExchange* exchange) override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  void OnDayTypeChosen();
  unsigned checkedBits(int firstId, int count) const;

  const XmlDocument& dayTypes_;
  int year_;
  int firstMonth_;
  int lastMonth_;
  int dayType_;
  unsigned months_ = 0;
  unsigned weekdays_ = 0;
};
