#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace automation {

/// Lines in from one descriptor, lines out to another. Owns neither.
class LineChannel {
 public:
  static constexpr std::size_t DefaultLineLimit = 64U * 1024 * 1024;

  LineChannel(int input, int output, std::size_t lineLimit = DefaultLineLimit)
      : input_(input), output_(output), lineLimit_(lineLimit) {}

  enum class Read { line, tooLong, end };
  /// Waits for a line and gives it without its line break. A last line without one counts. Of a
  /// line over the limit nothing is kept.
  Read read(std::string& line);

  /// Writes a line with its break. False when nobody reads any more.
  bool write(std::string line);

 private:
  bool fill();

  int input_;
  int output_;
  std::size_t lineLimit_;
  std::string buffer_;
  std::size_t at_ = 0;
};

}  // namespace automation
