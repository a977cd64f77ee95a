#include "controller/storage/checksum.h"

#include <zlib.h>

namespace lamp::controller {

std::uint32_t checksumOf(std::string_view bytes, std::uint32_t before) {
  // Without bytes the library would begin anew.
  if (bytes.empty()) return before;
  const void* begin = bytes.data();
  return static_cast<std::uint32_t>(
      ::crc32_z(before, static_cast<const Bytef*>(begin), bytes.size()));
}

}  // namespace lamp::controller
