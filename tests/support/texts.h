#pragma once

#include <filesystem>

namespace support {

/// Puts the pseudo language in force in which every text reads as its own number: "[311]".
void texts();

/// The folder of the catalogues in the source tree.
std::filesystem::path textsFolder();

}  // namespace support
