#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

// Eight bytes of a text at a time. Internal to host/xml.

namespace host::xml {

inline constexpr std::size_t WordBytes = sizeof(std::uint64_t);

/// Eight bytes as they lie in memory; the first is the lowest of the number on every machine.
inline std::uint64_t loadWord(const char* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, WordBytes);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return word;
}

/// The same character in every byte.
constexpr std::uint64_t everyByte(unsigned char c) {
  return 0x0101010101010101U * c;
}

inline constexpr std::uint64_t TopBits = everyByte(0x80);

// The marks below are top bits of bytes. A borrow may set a mark too many, but only behind (above)
// a byte that is rightly marked, so that "none" and "the first" are exact.

/// Marks the bytes below @p limit, which is at most 0x80, of those that are below 0x80.
constexpr std::uint64_t marksBelow(std::uint64_t word, unsigned char limit) {
  return (word - everyByte(limit)) & ~word;
}

/// Marks the bytes equal to @p c, of those that are below 0x80.
constexpr std::uint64_t marksOf(std::uint64_t word, unsigned char c) {
  return marksBelow(word ^ everyByte(c), 1);
}

/// How many bytes in front carry no mark: 0 to 8.
inline unsigned unmarkedInFront(std::uint64_t marks) {
  return static_cast<unsigned>(std::countr_zero(marks & TopBits)) / 8;
}

}  // namespace host::xml
