#include "controller/storage/checksum.h"

#include <array>
#include <cstddef>

namespace lamp::controller {
namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320U;
// So many bytes are taken in one step, each with a table of its own.
constexpr std::size_t kStride = 8;
using Table = std::array<std::uint32_t, 256>;

constexpr std::array<Table, kStride> makeTables() {
  std::array<Table, kStride> tables{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t value = byte;
    for (int bit = 0; bit < 8; ++bit) {
      value = (value >> 1U) ^ ((value & 1U) != 0 ? kPolynomial : 0U);
    }
    tables[0][byte] = value;
  }
  for (std::size_t step = 1; step < kStride; ++step) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::uint32_t value = tables[step - 1][byte];
      tables[step][byte] = (value >> 8U) ^ tables[0][value & 0xFFU];
    }
  }
  return tables;
}

constexpr std::array<Table, kStride> kTables = makeTables();

std::uint32_t byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

}  // namespace

std::uint32_t checksumOf(std::string_view bytes, std::uint32_t before) {
  std::uint32_t value = ~before;
  while (bytes.size() >= kStride) {
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < kStride; ++i) {
      const std::uint32_t old = i < 4 ? (value >> (8U * i)) & 0xFFU : 0U;
      next ^= kTables[kStride - 1 - i][byteAt(bytes, i) ^ old];
    }
    value = next;
    bytes.remove_prefix(kStride);
  }
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    value = (value >> 8U) ^ kTables[0][(value ^ byteAt(bytes, i)) & 0xFFU];
  }
  return ~value;
}

}  // namespace lamp::controller
