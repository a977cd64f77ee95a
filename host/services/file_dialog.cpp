#include "host/services/file_dialog.h"

#include <algorithm>
#include <system_error>

#include "host/text/utf.h"

namespace Infrastructure::FileDialogSupportNS {
namespace {

constexpr char16_t End = u'\0';

void appendPart(std::u16string& out, std::u16string_view part) {
  out += part.substr(0, part.find(End));
  out += End;
}

// Takes the part in front of the next end away.
std::u16string_view takePart(std::u16string_view& rest) {
  const std::u16string_view part = rest.substr(0, rest.find(End));
  rest.remove_prefix(std::min(rest.size(), part.size() + 1));
  return part;
}

// From the working folder on; without "." and ".." where that names the same file.
std::filesystem::path fullPath(const std::filesystem::path& chosen) {
  std::error_code failed;
  const std::filesystem::path full = std::filesystem::absolute(chosen, failed);
  if (failed) return chosen;
  const std::filesystem::path plain = full.lexically_normal();
  return std::filesystem::equivalent(plain, full, failed) ? plain : full;
}

}  // namespace

XCBasicString FileDialogSupport::PrepareFilters(const std::vector<host::FileFilter>& filters) {
  std::u16string text;
  for (const host::FileFilter& filter : filters) {
    appendPart(text, filter.description);
    appendPart(text, host::toUtf16(filter.pattern));
  }
  return text;
}

std::filesystem::path FileDialogSupport::OpenFileDialog(CWnd* parent, std::u16string_view filters) {
  host::FileRequest request{parent, {}};
  while (!filters.empty()) {
    const XCBasicString description = takePart(filters);
    request.filters.push_back({description, host::toUtf8(takePart(filters))});
  }
  const std::filesystem::path chosen = host::services().frontEnd().openFile(request);
  return chosen.empty() ? chosen : fullPath(chosen);
}

}  // namespace Infrastructure::FileDialogSupportNS
