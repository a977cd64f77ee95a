#include "controller/model/tar_archive.h"

#include <algorithm>
#include <cstdint>

namespace lamp::controller {
namespace {

// Offsets and lengths of a ustar header, in bytes.
constexpr std::size_t kBlock = 512;
constexpr std::size_t kNameLength = 100;
constexpr std::size_t kSizeAt = 124;
constexpr std::size_t kSizeLength = 12;
constexpr std::size_t kChecksumAt = 148;
constexpr std::size_t kChecksumLength = 8;
constexpr std::size_t kMagicAt = 257;
constexpr std::string_view kMagic = "ustar";

bool isZero(std::string_view block) {
  return std::all_of(block.begin(), block.end(), [](char c) { return c == '\0'; });
}

// Octal digits, with blanks before and a blank or a zero behind; false for anything else.
bool readOctal(std::string_view field, std::uint64_t& value) {
  std::size_t at = field.find_first_not_of(' ');
  value = 0;
  bool digits = false;
  for (; at < field.size() && field[at] >= '0' && field[at] <= '7'; ++at) {
    value = value * 8 + static_cast<std::uint64_t>(field[at] - '0');
    digits = true;
  }
  return digits && (at >= field.size() || field[at] == '\0' || field[at] == ' ');
}

// The sum of the header's bytes, its own checksum field counted as blanks.
std::uint64_t checksumOf(std::string_view header) {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < header.size(); ++i) {
    const bool own = i >= kChecksumAt && i < kChecksumAt + kChecksumLength;
    sum += static_cast<unsigned char>(own ? ' ' : header[i]);
  }
  return sum;
}

std::string faultOfHeader(std::string_view header, std::uint64_t& size) {
  std::uint64_t checksum = 0;
  if (header.substr(kMagicAt, kMagic.size()) != kMagic) {
    return "it is no tar archive (the mark \"ustar\" is missing)";
  }
  if (!readOctal(header.substr(kChecksumAt, kChecksumLength), checksum) ||
      checksum != checksumOf(header)) {
    return "a header of the tar archive has a wrong checksum";
  }
  if (!readOctal(header.substr(kSizeAt, kSizeLength), size)) {
    return "a header of the tar archive has no size";
  }
  return "";
}

}  // namespace

TarListing listTar(std::string_view archive) {
  TarListing listing;
  if (archive.empty()) {
    listing.fault = "the file is empty";
    return listing;
  }
  std::size_t at = 0;
  while (at + kBlock <= archive.size() && !isZero(archive.substr(at, kBlock))) {
    const std::string_view header = archive.substr(at, kBlock);
    std::uint64_t size = 0;
    listing.fault = faultOfHeader(header, size);
    if (!listing.fault.empty()) return listing;
    at += kBlock;
    if (size > archive.size() - at) {
      listing.fault = "the tar archive is cut off";
      return listing;
    }
    const std::string_view name = header.substr(0, kNameLength);
    listing.members.push_back(TarMember{std::string(name.substr(0, name.find('\0'))),
                                        archive.substr(at, static_cast<std::size_t>(size))});
    at += (static_cast<std::size_t>(size) + kBlock - 1) / kBlock * kBlock;
    at = std::min(at, archive.size());
  }
  if (listing.members.empty()) listing.fault = "it is no tar archive (it has no member)";
  return listing;
}

}  // namespace lamp::controller
