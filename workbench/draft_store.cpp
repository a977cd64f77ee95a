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

}  // namespace

DraftStore::DraftStore(const std::filesystem::path& folder, const std::string& deviceId,
                       const std::string& section) {
  // A device's id may be anything; its digest is a name for a file.
  const std::string name = sha256Text(deviceId).substr(0, NameDigits) + "-" + section;
  std::string ignored;
  file_ = folder / (name + ".json");
  if (makePrivateFolder(folder, ignored)) lock_.take(folder / (name + ".lock"));
}

std::optional<Draft> DraftStore::load() const {
  std::string content;
  std::string ignored;
  if (!isHeld() || !host::readFile(file_, LargestFile, content, ignored)) return std::nullopt;
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
  if (draft.values.empty()) return std::nullopt;
  return draft;
}

bool DraftStore::save(const Draft& draft) const {
  if (!isHeld()) return false;
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
  std::string ignored;
  if (files.exists(fresh)) files.remove(fresh, ignored);
  return files.writeNew(fresh, out.text(), ignored) && files.replace(fresh, file_, ignored);
}

void DraftStore::drop() const {
  std::string ignored;
  if (isHeld() && host::fileSystem().exists(file_)) host::fileSystem().remove(file_, ignored);
}

}  // namespace workbench
