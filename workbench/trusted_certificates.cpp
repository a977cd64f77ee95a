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

TrustedCertificates::Entries TrustedCertificates::load() const {
  std::string content;
  std::string ignored;
  Entries entries;
  if (!host::readFile(file_, LargestFile, content, ignored)) return entries;
  const json object = json::parse(content, nullptr, false);
  if (!object.is_object()) return entries;
  for (const auto& [address, fingerprint] : object.items())
    if (isFingerprint(fingerprint)) entries[address] = fingerprint.get<std::string>();
  return entries;
}

bool TrustedCertificates::save(const Entries& entries, std::string& cause) const {
  JsonWriter out;
  out.beginObject();
  for (const auto& [address, fingerprint] : entries) out.member(address, fingerprint);
  out.endObject();
  return makePrivateFolder(file_.parent_path(), cause) &&
         host::saveWhole(file_, out.text() + "\n", cause);
}

std::optional<std::string> TrustedCertificates::find(const std::string& address) const {
  const Entries entries = load();
  const auto found = entries.find(address);
  return found == entries.end() ? std::nullopt : std::optional(found->second);
}

bool TrustedCertificates::trust(const std::string& address, const std::string& fingerprint,
                                std::string& cause) const {
  Entries entries = load();
  entries[address] = fingerprint;
  return save(entries, cause);
}

bool TrustedCertificates::forget(const std::string& address, std::string& cause) const {
  Entries entries = load();
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
