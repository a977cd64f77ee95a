#include "fuzz/input.h"

#include <algorithm>

namespace fuzz {

std::uint8_t Input::byte() {
  if (bytes_.empty()) return 0;
  const auto first = static_cast<std::uint8_t>(bytes_.front());
  bytes_.remove_prefix(1);
  return first;
}

std::size_t Input::below(std::size_t count) {
  std::size_t number = byte();
  if (count > 256) number = number << 8U | byte();
  return number % count;
}

std::string Input::text(std::size_t longest) {
  const std::size_t length = below(longest);  // takes bytes itself
  const std::size_t size = std::min(length, bytes_.size());
  std::string out(bytes_.substr(0, size));
  bytes_.remove_prefix(size);
  return out;
}

std::string_view Input::until(char end) {
  const std::size_t found = std::min(bytes_.find(end), bytes_.size());
  const std::string_view out = bytes_.substr(0, found);
  bytes_.remove_prefix(std::min(found + 1, bytes_.size()));
  return out;
}

}  // namespace fuzz
