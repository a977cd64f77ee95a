#include "programs/calendar_store.h"

#include <algorithm>
#include <string>

#include "exchange/type_names.h"
#include "host/services/files.h"
#include "host/services/identity.h"
#include "host/services/setup.h"
#include "programs/calendar_names.h"

namespace lamp {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Ending = ".xclmc";

fs::path pathOf(std::string_view utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

bool staysInFolder(std::u16string_view name) {
  const auto leads = [](char16_t c) {
    return c < 0x20 || c == 0x7F || c == u'/' || c == u'\\' || c == u':';
  };
  return !name.empty() && name != u"." && name != u".." && !host::isDeviceName(name) &&
         std::none_of(name.begin(), name.end(), leads);
}

}  // namespace

fs::path calendarFolder() {
  const XCVarnisSetup& setup = XCVarnisSetup::Get();
  return setup.ConfigurationFolder() /
         pathOf((setup.DriverName(type_name::Controller) + u" Calendar").ToUtf8());
}

std::optional<fs::path> calendarFile(const XCBasicString& name) {
  if (!staysInFolder(name)) return std::nullopt;
  return calendarFolder() / pathOf(name.ToUtf8() + std::string(Ending));
}

std::vector<XCBasicString> storedCalendars() {
  std::vector<XCBasicString> names;
  for (const fs::path& file : host::fileSystem().list(calendarFolder(), Ending)) {
    const std::u8string name = file.filename().u8string();
    const std::string title(name.begin(), name.end() - Ending.size());
    if (!title.empty()) names.push_back(XCBasicString::FromUtf8(title));
  }
  return names;
}

bool readCalendar(const std::optional<fs::path>& file, XmlDocument& calendar) {
  return file && calendar.Load(*file);
}

std::u16string_view moduleMark(ProgramKind kind) {
  return kind == ProgramKind::clock ? u"T" : u"F";
}

bool isOfKind(const XmlDocument& calendar, std::u16string_view mark) {
  return calendar.Root() != nullptr && calendar.Root()->Value(calendar::HasModule) == mark;
}

}  // namespace lamp
