#pragma once

#include <filesystem>
#include <optional>

#include "host/dialogs/base_dlg.h"
#include "programs/calendar_document.h"

namespace lamp {

/// The name that a calendar is to be saved under, and its file.
struct CalendarTarget {
  XCBasicString name;
  std::filesystem::path file;
};

/// Asks for a name, @p proposed at first, until the calendar may be written to its file: never over
/// one for the other kind of controller, and over others only when the user agrees. None when the
/// user cancels.
std::optional<CalendarTarget> askForTarget(XCBaseDlg& parent, const CalendarDocument& calendar,
                                           XCBasicString proposed);

}  // namespace lamp
