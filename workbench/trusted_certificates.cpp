#include "workbench/trusted_certificates.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/services/files.h"
#include "workbench/json_writer.h"
#include "workbench/state_folder.h"

namespace workbench {
namespace {

using nlohmann::json;

constexpr std::size_t LargestFile = 4U * 1024 * 1024;
constexpr std::size_t Digits = 64;

bool isFingerprint(const json& value) {
  if (!value.is_string()) return false;
  const auto& text = value.get_ref<const std::string&>();
  return text.size() == Digits && std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
         });
}

}  // namespace

// A missing file holds no trust. False for one that can't be read and for one that this program did
// not write: what it is to say of an address is not known then.
bool TrustedCertificates::load(Entries& entries, std::string& cause) const {
  std::string content;
  if (!host::fileSystem().exists(file_)) return true;
  if (!host::readFile(file_, LargestFile, content, cause, host::NamedBy::program)) {
    cause = file_.string() + ": " + cause;
    return false;
  }
  const json object = json::parse(content, nullptr, false);
  if (!object.is_object() || !std::all_of(object.begin(), object.end(), isFingerprint)) {
    cause = file_.string() + ": It is damaged";
    return false;
  }
  for (const auto& [address, fingerprint] : object.items())
    entries[address] = fingerprint.get<std::string>();
  return true;
}

bool TrustedCertificates::save(const Entries& entries, std::string& cause) const {
  JsonWriter out;
  out.beginObject();
  for (const auto& [address, fingerprint] : entries) out.member(address, fingerprint);
  out.endObject();
  return makePrivateFolder(file_.parent_path(), cause) &&
         host::saveWhole(file_, out.text() + "\n", cause, host::NamedBy::program);
}

std::optional<std::string> TrustedCertificates::find(const std::string& address,
                                                     std::string* problem) const {
  Entries entries;
  std::string cause;
  const bool loaded = load(entries, cause);
  if (problem != nullptr) *problem = loaded ? std::string() : cause;
  const auto found = entries.find(address);
  return !loaded || found == entries.end() ? std::nullopt : std::optional(found->second);
}

bool TrustedCertificates::trust(const std::string& address, const std::string& fingerprint,
                                std::string& cause) const {
  Entries entries;
  if (!load(entries, cause)) return false;
  entries[address] = fingerprint;
  return save(entries, cause);
}

bool TrustedCertificates::forget(const std::string& address, std::string& cause) const {
  Entries entries;
  if (!load(entries, cause)) return false;
  return entries.erase(address) == 0 || save(entries, cause);
}

std::string shownFingerprint(const std::string& fingerprint) {
  std::string shown;
  for (std::size_t i = 0; i < fingerprint.size(); ++i) {
    if (i > 0 && i % 2 == 0) shown += ':';
    const char c = fingerprint[i];
    shown += c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return shown;
}

}  // namespace workbench
