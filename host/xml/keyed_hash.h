#pragma once

#include <cstdint>
#include <string_view>

namespace host::xml {

/// SipHash-1-3 of Aumasson and Bernstein, with a key that is drawn once a process: whoever sends
/// names can't know which of them meet in one place of a table.
class KeyedHash {
 public:
  KeyedHash();
  /// With a key of the caller's.
  KeyedHash(std::uint64_t first, std::uint64_t second) : first_(first), second_(second) {}
  std::size_t operator()(std::string_view text) const;

 private:
  std::uint64_t first_;
  std::uint64_t second_;
};

}  // namespace host::xml
