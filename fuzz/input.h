#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

/// What a fuzzer made up, read from front to back: documents first, then the choices of a user, one
/// byte each. A document ends at a form feed, which no XML holds, so that seeds are texts that a
/// person can write. Behind its end an input holds zeros.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : bytes_(reinterpret_cast<const char*>(data), size) {}

  bool empty() const { return bytes_.empty(); }
  std::uint8_t byte();
  bool flag() { return (byte() & 1U) != 0; }
  /// A number below @p count, which is not 0. Takes one byte, two for a count above 256.
  std::size_t below(std::size_t count);
  /// The bytes up to the next form feed.
  std::string document() { return std::string(until('\f')); }
  /// The bytes up to the end of the line.
  std::string line() { return std::string(until('\n')); }
  /// A length below @p longest and that many bytes.
  std::string text(std::size_t longest);

 private:
  std::string_view until(char end);
  std::string_view bytes_;
};

}  // namespace fuzz
