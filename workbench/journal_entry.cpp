#include "workbench/journal_entry.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "workbench/json_writer.h"

namespace workbench {
namespace {

using nlohmann::json;

struct TextMember {
  const char* name;
  std::string JournalEntry::*text;
  bool needed;
};

constexpr TextMember Texts[] = {{"when", &JournalEntry::when, true},
                                {"who", &JournalEntry::who, true},
                                {"program", &JournalEntry::program, false},
                                {"deviceId", &JournalEntry::deviceId, false},
                                {"deviceName", &JournalEntry::deviceName, false},
                                {"address", &JournalEntry::address, false},
                                {"section", &JournalEntry::section, false},
                                {"document", &JournalEntry::document, false},
                                {"before", &JournalEntry::before, false},
                                {"error", &JournalEntry::error, false}};

template <class Value>
bool take(const json& object, const char* name, bool needed, Value& value) {
  const auto member = object.find(name);
  if (member == object.end()) return !needed;
  if constexpr (std::is_same_v<Value, std::string>) {
    if (!member->is_string()) return false;
  } else if constexpr (std::is_same_v<Value, bool>) {
    if (!member->is_boolean()) return false;
  } else if (!member->is_number_integer()) {
    return false;
  }
  value = member->get<Value>();
  return true;
}

}  // namespace

std::string JournalEntry::line() const {
  JsonWriter out;
  out.beginObject();
  for (const TextMember& member : Texts)
    if (member.needed || !(this->*member.text).empty()) out.member(member.name, this->*member.text);
  if (upload) {
    out.name("upload").beginObject().member("name", upload->name);
    out.member("bytes", static_cast<std::int64_t>(upload->bytes)).member("sha256", upload->sha256);
    out.endObject();
  }
  out.member("command", command).member("ok", ok).member("milliseconds", milliseconds).endObject();
  return std::move(out.text()) + '\n';
}

std::optional<JournalEntry> JournalEntry::read(std::string_view line) {
  const json object = json::parse(line, nullptr, false);
  if (!object.is_object()) return std::nullopt;
  JournalEntry entry;
  for (const TextMember& member : Texts)
    if (!take(object, member.name, member.needed, entry.*member.text)) return std::nullopt;
  if (!take(object, "command", true, entry.command) || !take(object, "ok", true, entry.ok) ||
      !take(object, "milliseconds", false, entry.milliseconds))
    return std::nullopt;
  if (const auto upload = object.find("upload"); upload != object.end() && upload->is_object()) {
    JournalEntry::Upload taken;
    if (!take(*upload, "name", false, taken.name) || !take(*upload, "bytes", false, taken.bytes) ||
        !take(*upload, "sha256", false, taken.sha256))
      return std::nullopt;
    entry.upload = std::move(taken);
  }
  return entry;
}

}  // namespace workbench
