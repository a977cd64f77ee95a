#include "host/services/file_dialog.h"

#include <algorithm>

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
  return host::services().frontEnd().openFile(request);
}

}  // namespace Infrastructure::FileDialogSupportNS
