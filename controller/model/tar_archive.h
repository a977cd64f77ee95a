#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lamp::controller {

/// One entry of a tar archive.
struct TarMember {
  std::string name;
  std::string_view bytes;  ///< into the archive that was read
};

/// What was found in an archive, or why it is none.
struct TarListing {
  std::vector<TarMember> members;
  std::string fault;  ///< empty when the archive is good
};

/// Reads a POSIX tar archive (ustar): magic and checksum of every header must be right, every
/// member whole, and there must be at least one. The bytes stay the caller's.
TarListing listTar(std::string_view archive);

}  // namespace lamp::controller
