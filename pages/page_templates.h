#pragma once

#include "host/ui/control_spec.h"

// The templates of the settings pages, by number. Each stands with its page.

namespace lamp {

namespace page_template {
constexpr int ConfigurationMenu = 4528;
constexpr int GeneralSettings = 4529;
constexpr int ScheduledTasks = 4531;
constexpr int Firmware = 4532;
constexpr int InputsOutputs = 4533;
constexpr int NodeTable = 4538;
constexpr int NodePower = 4539;
constexpr int GroupSchedules = 4540;
constexpr int AlarmThresholds = 4541;
constexpr int NodeRemoval = 4542;
constexpr int Blacklist = 4544;
constexpr int NodeCommand = 4545;
constexpr int CalendarEditor = 4546;
constexpr int DayTypeEditor = 4547;
constexpr int CalendarSelection = 4548;
}  // namespace page_template

}  // namespace lamp
