#pragma once

#include <string>
#include <string_view>

namespace lamp::controller {

/// A firmware image that was looked at.
struct FirmwareImage {
  std::string version;   ///< what the controller reports once the image is active
  std::string fileName;  ///< under which it is kept: letters, digits, ".", "_" and "-" only
  std::string fault;     ///< why it is not accepted; empty when it is
};

/// Checks that `bytes` is a tar archive and finds out its version: the first line of its member
/// "version", else the first dotted number in the name of the file, else `present` with its last
/// number one higher. `path` is the path on the client's computer, of any system.
FirmwareImage inspectFirmware(std::string_view bytes, std::string_view path,
                              std::string_view present);

}  // namespace lamp::controller
