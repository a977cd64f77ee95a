#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "host/export.h"
#include "host/services/services.h"

namespace Infrastructure::FileDialogSupportNS {

/// The choice of a file by the user.
class HOST_API FileDialogSupport {
 public:
  /// The filters as one text: each description and each pattern ends in a zero character, so that
  /// a description may hold any character that is seen. A description ends at a zero of its own.
  static XCBasicString PrepareFilters(const std::vector<host::FileFilter>& filters);

  /// Lets the user choose a file to open, in front of @p parent, which may be null. @p filters is
  /// what PrepareFilters made. Returns the full path, an empty one when the user cancelled.
  static std::filesystem::path OpenFileDialog(CWnd* parent, std::u16string_view filters);
};

}  // namespace Infrastructure::FileDialogSupportNS
