#pragma once

#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "workbench/pages/section_compare.h"

namespace workbench {

/// What became of values that were put into a page.
struct PutReport {
  std::size_t put = 0;               ///< values that the page took
  std::size_t same = 0;              ///< values that the page had already
  std::vector<std::string> refused;  ///< "TimeZone" or "1: Reference", with the reason behind it
  std::size_t known() const { return put + same + refused.size(); }
};

/// Makes an open page take values over, by the gestures and rules that hold for its user: typed
/// into the edits of their rows, chosen, checked; rows made, deleted and moved by the page's own
/// buttons. Values that one gesture can give to several rows go in together. Nothing is sent; the
/// selection of the lists is as before in the end, where its rows are still there. A value that the
/// page has no control for, or that it refuses, is told with its reason.
PutReport putChanges(XCBaseDlg& dialog, host::EditedPage& page,
                     const std::vector<ValueChange>& changes);

/// Makes an open page hold the values of @p section, as it was read or would be.
PutReport putSection(XCBaseDlg& dialog, host::EditedPage& page,
                     const XmlDocument::XmlNode& section);

}  // namespace workbench
