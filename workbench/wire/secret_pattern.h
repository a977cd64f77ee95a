#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/wire/escape.h"

namespace workbench {

/// A part of a text, in bytes.
struct TextSpan {
  std::size_t from = 0;
  std::size_t to = 0;
  bool operator==(const TextSpan&) const = default;
};

/// Finds one secret in UTF-8 text in whatever spelling: each of its characters may stand as it is
/// or as an Escape. It walks over a text once (a bit for each byte of the secret tells how much of
/// it has come), so that no text costs more than its size.
class SecretPattern {
 public:
  /// The longest secret that is looked for, in bytes.
  static constexpr std::size_t MostBytes = 64;

  /// @p secret is UTF-8, neither empty nor longer than MostBytes.
  explicit SecretPattern(std::string_view secret);

  bool isIn(std::string_view text) const;
  /// Appends where it stands, in order; overlapping places as one or as neighbours.
  void find(std::string_view text, std::vector<TextSpan>& found) const;
  /// The end of the longest one that begins at @p at; @p at where none does.
  std::size_t endOfOneAt(std::string_view text, std::size_t at) const;
  /// Where a beginning of the secret stands at the very end of a text that was cut; the text's size
  /// where none does.
  std::size_t beginningAtEnd(std::string_view text) const;

 private:
  using States = std::uint64_t;  // bit n: the first n + 1 bytes have come
  static constexpr std::size_t Window = Escape::MostBytes + 1;

  enum class Begin { anywhere, atStart };
  States step(States states, char byte) const {
    return states << 1 & accepts_[static_cast<unsigned char>(byte)];
  }
  template <class Visit>
  void walk(std::string_view text, Begin begin, Visit visit) const;
  std::size_t beginningOf(std::string_view text, std::size_t end, States states,
                          std::size_t floor) const;

  std::array<States, 256> accepts_{};  // by byte: where in the secret it stands
  States last_ = 0;
};

}  // namespace workbench
