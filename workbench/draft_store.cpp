#include "workbench/draft_store.h"

#include <nlohmann/json.hpp>

#include "host/services/files.h"
#include "workbench/json_writer.h"
#include "workbench/sha256.h"
#include "workbench/state_folder.h"

namespace workbench {
namespace {

using nlohmann::json;

constexpr std::size_t LargestFile = 64U * 1024 * 1024;
constexpr std::size_t NameDigits = 24;

void write(JsonWriter& out, const PageValues::Row& row) {
  out.beginObject();
  for (const auto& [name, value] : row) out.member(name, std::u16string_view(value));
  out.endObject();
}

std::u16string wide(const json& text) {
  return XCBasicString::FromUtf8(text.get<std::string>()).str();
}

bool read(const json& object, PageValues::Row& row) {
  if (!object.is_object()) return false;
  for (const auto& [name, value] : object.items()) {
    if (!value.is_string()) return false;
    row[name] = wide(value);
  }
  return true;
}

// None for what no draft was written as.
std::optional<Draft> draftIn(const std::string& content) {
  const json object = json::parse(content, nullptr, false);
  if (!object.is_object() || !object.contains("when") || !object["when"].is_string())
    return std::nullopt;
  Draft draft{.when = object["when"].get<std::string>(), .values = {}};
  if (!read(object.value("fields", json::object()), draft.values.fields)) return std::nullopt;
  const json rows = object.value("rows", json::object());
  if (!rows.is_object()) return std::nullopt;
  for (const auto& [key, row] : rows.items())
    if (!read(row, draft.values.rows[XCBasicString::FromUtf8(key).str()])) return std::nullopt;
  const json tasks = object.value("tasks", json(std::string()));
  if (!tasks.is_string()) return std::nullopt;
  draft.values.tasks = tasks.get<std::string>();
  return draft;
}

}  // namespace

DraftStore::DraftStore(const std::filesystem::path& folder, const std::string& deviceId,
                       const std::string& section) {
  // A device's id may be anything; its digest is a name for a file.
  const std::string name = sha256Text(deviceId).substr(0, NameDigits) + "-" + section;
  std::string why;
  file_ = folder / (name + ".json");
  if (!makePrivateFolder(folder, why))
    failed(folder, why);
  else if (!lock_.take(folder / (name + ".lock")) && !lock_.isHeldElsewhere())
    problem_ = lock_.problem().ToUtf8();
}

bool DraftStore::failed(const std::filesystem::path& path, const std::string& why) {
  problem_ = path.string() + ": " + why;
  return false;
}

std::optional<Draft> DraftStore::load() {
  std::string content;
  std::string why;
  if (!isHeld()) return std::nullopt;
  if (!host::readFile(file_, LargestFile, content, why, host::NamedBy::program)) {
    if (host::fileSystem().exists(file_)) mayReplace_ = failed(file_, why);
    return std::nullopt;
  }
  std::optional<Draft> draft = draftIn(content);
  if (!draft) putAside();
  return draft && !draft->values.empty() ? std::move(draft) : std::nullopt;
}

// A draft that can't be understood is out of the way of the next one, but not lost.
void DraftStore::putAside() {
  std::filesystem::path damaged = file_;
  damaged += ".damaged";
  std::string why;
  mayReplace_ = host::fileSystem().replace(file_, damaged, why);
  failed(file_, mayReplace_ ? "It is damaged, and stays as " + damaged.filename().string() : why);
}

bool DraftStore::save(const Draft& draft) {
  if (!isHeld() || !mayReplace_) return false;
  JsonWriter out;
  out.beginObject().member("when", draft.when).name("fields");
  write(out, draft.values.fields);
  out.name("rows").beginObject();
  for (const auto& [key, row] : draft.values.rows) {
    out.name(XCBasicString(key).ToUtf8());
    write(out, row);
  }
  out.endObject();
  if (!draft.values.tasks.empty()) out.member("tasks", draft.values.tasks);
  out.endObject();
  std::filesystem::path fresh = file_;
  fresh += ".new";
  host::FileSystem& files = host::fileSystem();
  std::string why;
  if (files.exists(fresh)) files.remove(fresh, why);
  return (files.writeNew(fresh, out.text(), why) && files.replace(fresh, file_, why)) ||
         failed(file_, why);
}

void DraftStore::drop() const {
  std::string ignored;
  if (isHeld() && mayReplace_ && host::fileSystem().exists(file_))
    host::fileSystem().remove(file_, ignored);
}

}  // namespace workbench
