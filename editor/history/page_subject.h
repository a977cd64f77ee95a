#pragma once

#include <optional>
#include <string>

#include "host/dialogs/base_dlg.h"
#include "workbench/device_of.h"
#include "workbench/wire/exchange_record.h"

namespace editor {

/// What a settings page is about.
struct PageSubject {
  workbench::DeviceName device;
  std::string written;  ///< the section that it sends, "E04"
  std::string read;     ///< the section that it was filled from, empty for a page that reads none
};

/// The subject of a dialog that is about to be shown: the exchange that it was filled from is the
/// last of @p record. None for a dialog that is no settings page.
std::optional<PageSubject> subjectOf(const XCBaseDlg& dialog,
                                     const workbench::ExchangeRecord& record);

}  // namespace editor
