#include "workbench/library_extent.h"

#include <elf.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "host/services/descriptor.h"

namespace workbench {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

// The system's gABI, "ELF Header" and "Program Header": e_ident, e_phoff, p_offset, p_filesz.
constexpr int OwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr int OwnOrder = std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;

bool readAt(int descriptor, std::uint64_t offset, void* to, std::size_t size) {
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) return false;
  const ssize_t count = host::uninterrupted(
      [&] { return ::pread(descriptor, to, size, static_cast<off_t>(offset)); });
  return count >= 0 && static_cast<std::size_t>(count) == size;
}

bool fits(std::uint64_t offset, std::uint64_t size, std::uint64_t whole) {
  return offset <= whole && size <= whole - offset;
}

bool isOwnLibrary(const Header& header) {
  return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
         header.e_ident[EI_CLASS] == OwnClass && header.e_ident[EI_DATA] == OwnOrder &&
         header.e_phentsize == sizeof(Segment);
}

bool holdsSegments(int descriptor, const Header& header, std::uint64_t size) {
  std::vector<Segment> segments(header.e_phnum);
  const std::size_t bytes = segments.size() * sizeof(Segment);
  if (!fits(header.e_phoff, bytes, size) ||
      !readAt(descriptor, header.e_phoff, segments.data(), bytes))
    return false;
  for (const Segment& segment : segments)
    if (!fits(segment.p_offset, segment.p_filesz, size)) return false;
  return true;
}

}  // namespace

bool isWholeLibrary(int descriptor, std::string& cause) {
  struct stat found {};
  Header header{};
  if (::fstat(descriptor, &found) != 0 || !readAt(descriptor, 0, &header, sizeof header) ||
      !isOwnLibrary(header))
    return true;
  const auto size = static_cast<std::uint64_t>(found.st_size);
  const std::uint64_t sections = std::uint64_t(header.e_shnum) * header.e_shentsize;
  if (holdsSegments(descriptor, header, size) && fits(header.e_shoff, sections, size)) return true;
  cause = "it is shorter than its headers say: it was cut off";
  return false;
}

}  // namespace workbench
