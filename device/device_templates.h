#pragma once

// The templates of the device dialogs, by number. Each stands with its dialog.

namespace lamp::device_template {

constexpr int DeviceDefinition = 4530;
constexpr int CommunicationSettings = 4535;
constexpr int NodeUpdate = 4543;

}  // namespace lamp::device_template
