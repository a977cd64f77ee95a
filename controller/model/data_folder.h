#pragma once

// The folders inside the data folder, each once.
namespace lamp::controller::data_folder {

inline constexpr const char* kFirmware = "firmware";
inline constexpr const char* kReports = "reports";
inline constexpr const char* kOutbox = "outbox";
/// How the name of a file ends that is still being written.
inline constexpr const char* kUnfinished = ".part";

}  // namespace lamp::controller::data_folder
