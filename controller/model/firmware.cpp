#include "controller/model/firmware.h"

#include <algorithm>
#include <cstdlib>

#include "controller/model/data_folder.h"
#include "controller/model/tar_archive.h"

namespace lamp::controller {
namespace {

constexpr std::size_t kLongestVersion = 32;
constexpr std::size_t kLongestName = 100;

std::string baseNameOf(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string plainName(std::string name) {
  for (char& c : name) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                       c == '.' || c == '_' || c == '-';
    if (!plain) c = '_';
  }
  const bool onlyDots = name.find_first_not_of('.') == std::string::npos;
  name = onlyDots ? "firmware.tar" : name.substr(0, kLongestName);
  // What has that ending is taken for unfinished at the next start.
  return name.ends_with(data_folder::kUnfinished) ? name + "_" : name;
}

std::string versionMember(const TarListing& listing) {
  for (const TarMember& member : listing.members) {
    if (baseNameOf(member.name) != "version") continue;
    const std::string_view line = member.bytes.substr(0, member.bytes.find_first_of("\r\n"));
    const bool printable =
        std::all_of(line.begin(), line.end(), [](char c) { return c > ' ' && c < '\x7F'; });
    if (printable && line.size() <= kLongestVersion) return std::string(line);
  }
  return "";
}

// Digits, and at least once a point and digits.
std::string versionInName(const std::string& name) {
  constexpr const char* kDigits = "0123456789";
  for (std::size_t at = name.find_first_of(kDigits); at != std::string::npos;) {
    const std::size_t end = name.find_first_not_of("0123456789.", at);
    std::string found = name.substr(at, end == std::string::npos ? end : end - at);
    found = found.substr(0, found.find(".."));
    while (found.ends_with('.')) found.pop_back();
    if (found.find('.') != std::string::npos) return found.substr(0, kLongestVersion);
    at = end == std::string::npos ? end : name.find_first_of(kDigits, end);
  }
  return "";
}

std::string nextVersion(std::string_view present) {
  const std::size_t point = present.rfind('.');
  const std::string head(point == std::string_view::npos ? "" : present.substr(0, point + 1));
  const std::string last(point == std::string_view::npos ? present : present.substr(point + 1));
  return head + std::to_string(std::atol(last.c_str()) + 1);
}

}  // namespace

FirmwareImage inspectFirmware(std::string_view bytes, std::string_view path,
                              std::string_view present) {
  FirmwareImage image;
  const TarListing listing = listTar(bytes);
  image.fault = listing.fault;
  if (!image.fault.empty()) return image;
  const std::string name = baseNameOf(path);
  image.fileName = plainName(name);
  image.version = versionMember(listing);
  if (image.version.empty()) image.version = versionInName(name);
  if (image.version.empty()) image.version = nextVersion(present);
  return image;
}

}  // namespace lamp::controller
