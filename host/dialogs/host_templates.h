#pragma once

#include <vector>

#include "host/ui/control_spec.h"

namespace host {

/// The templates of the host's own dialogs.
const std::vector<DialogTemplate>& hostTemplates();

constexpr int OptionsTemplate = 100;
constexpr int DriverDeviceTemplate = 101;
constexpr int IdentificationTemplate = 102;
constexpr int FastSelectionTemplate = 103;

constexpr int MonthCount = 12;
constexpr int WeekdayCount = 7;

/// The controls of XCDlgDriverDeviceCfg.
struct DriverDeviceControl {
  enum : int {
    NameLabel = privateId(0),
    NameEdit,
    DescriptionLabel,
    DescriptionEdit,
    ViewGroup,
    HistoricCheck,
    PeriodLabel,
    PeriodEdit,
  };
};

/// The controls of CDlgIntroduceIdentification.
struct IdentificationControl {
  enum : int { Label = privateId(0), Entry };
};

/// The controls of CDlgFastSelection. Months and weekdays follow one another, from January and from
/// Monday on.
struct FastSelectionControl {
  enum : int {
    MonthsGroup = privateId(0),
    FirstMonth,
    WeekdaysGroup = FirstMonth + MonthCount,
    FirstWeekday,
    DayTypeLabel = FirstWeekday + WeekdayCount,
    Swatch,
    DayType,
  };
};

}  // namespace host
