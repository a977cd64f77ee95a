#include "programs/calendar_store.h"

#include <algorithm>
#include <string>
#include <utility>

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

// The name of a device's calendar stands in an XML document, and must find the file again.
XCBasicString titleOf(const std::string& utf8) {
  std::u16string title = XCBasicString::FromUtf8(utf8).str();
  const auto isNoCharacter = [](char16_t c) {
    return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || c >= 0xFFFE;
  };
  std::replace_if(title.begin(), title.end(), isNoCharacter, u'\uFFFD');
  return XCBasicString(std::move(title));
}

}  // namespace

fs::path calendarFolder() {
  const XCVarnisSetup& setup = XCVarnisSetup::Get();
  return setup.ConfigurationFolder() /
         pathOf((setup.DriverName(type_name::Controller) + u" Calendar").ToUtf8());
}

std::vector<StoredCalendar> storedCalendars() {
  std::vector<StoredCalendar> stored;
  for (const fs::path& file : host::fileSystem().list(calendarFolder(), Ending)) {
    const std::u8string name = file.filename().u8string();
    const std::string title(name.begin(), name.end() - Ending.size());
    if (!title.empty()) stored.push_back({titleOf(title), file});
  }
  return stored;
}

std::optional<fs::path> calendarFile(const XCBasicString& name) {
  for (StoredCalendar& stored : storedCalendars())
    if (stored.title == name) return std::move(stored.file);
  if (!staysInFolder(name)) return std::nullopt;
  return calendarFolder() / pathOf(name.ToUtf8() + std::string(Ending));
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
