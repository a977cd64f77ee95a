#pragma once

// The templates of the plug-in's dialogs, by number. Each stands with its dialog.

namespace lamp::template_number {

constexpr int ConfigurationMenu = 4528;
constexpr int GeneralSettings = 4529;
constexpr int DeviceDefinition = 4530;
constexpr int ScheduledTasks = 4531;
constexpr int Firmware = 4532;
constexpr int InputsOutputs = 4533;
constexpr int CommunicationSettings = 4535;
constexpr int NodeTable = 4538;
constexpr int NodePower = 4539;
constexpr int GroupSchedules = 4540;
constexpr int AlarmThresholds = 4541;
constexpr int NodeRemoval = 4542;
constexpr int NodeUpdate = 4543;
constexpr int Blacklist = 4544;
constexpr int NodeCommand = 4545;
constexpr int CalendarEditor = 4546;
constexpr int DayTypeEditor = 4547;
constexpr int CalendarSelection = 4548;

}  // namespace lamp::template_number
