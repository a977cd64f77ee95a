#pragma once

#include <vector>

#include "host/ui/control_spec.h"

namespace host {

/// The templates of the host's own dialogs.
const std::vector<DialogTemplate>& hostTemplates();

constexpr int OptionsTemplate = 100;
constexpr int DriverDeviceTemplate = 101;

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

}  // namespace host
