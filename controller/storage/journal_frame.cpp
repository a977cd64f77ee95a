#include "controller/storage/journal_frame.h"

#include <charconv>
#include <cstdio>
#include <optional>

#include "controller/storage/checksum.h"

namespace lamp::controller {
namespace {

// Positions and widths in the line that opens a frame.
constexpr std::string_view kMark = "R ";
constexpr std::size_t kNumberAt = 2;
constexpr std::size_t kNumberWidth = 10;
constexpr std::size_t kLengthAt = 13;
constexpr std::size_t kChecksummed = 21;  // number, blank and length
constexpr std::size_t kChecksumAt = 24;
constexpr std::size_t kChecksumWidth = 8;
constexpr std::size_t kLine = 33;

template <class Number>
bool readField(std::string_view text, int base, Number& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

struct Frame {
  std::uint64_t number = 0;
  std::string_view payload;
};

// The frame that begins at `at`, if a whole one does.
std::optional<Frame> frameAt(std::string_view bytes, std::size_t at) {
  const std::string_view line = bytes.substr(at, kLine);
  Frame frame;
  std::uint64_t length = 0;
  std::uint32_t checksum = 0;
  const bool form = line.size() == kLine && line.starts_with(kMark) && line[kLengthAt - 1] == ' ' &&
                    line[kChecksumAt - 1] == ' ' && line[kLine - 1] == '\n' &&
                    readField(line.substr(kNumberAt, kNumberWidth), 10, frame.number) &&
                    readField(line.substr(kLengthAt, kNumberWidth), 10, length) &&
                    readField(line.substr(kChecksumAt, kChecksumWidth), 16, checksum);
  if (!form || length > bytes.size() - at - kLine) return std::nullopt;
  frame.payload = bytes.substr(at + kLine, static_cast<std::size_t>(length));
  const std::uint32_t found =
      checksumOf(frame.payload, checksumOf(line.substr(kNumberAt, kChecksummed)));
  return found == checksum ? std::optional(frame) : std::nullopt;
}

bool anyFrameAfter(std::string_view bytes, std::size_t at, std::uint64_t number) {
  for (at = bytes.find(kMark, at); at != std::string_view::npos; at = bytes.find(kMark, at + 1)) {
    const std::optional<Frame> frame = frameAt(bytes, at);
    if (frame && frame->number >= number) return true;
  }
  return false;
}

std::uint32_t checksumIn(const std::string& frame) {
  std::uint32_t checksum = 0;
  readField(std::string_view(frame).substr(kChecksumAt, kChecksumWidth), 16, checksum);
  return checksum;
}

// Whether `rest` may be all that was written of a frame: the beginning of its line, or its line and
// less than its payload. Where a file grew before its bytes came there are zeros.
bool isBeginning(std::string_view rest, std::uint64_t number) {
  if (rest.find_first_not_of('\0') == std::string_view::npos) return true;
  char line[kLine];
  std::snprintf(line, sizeof line, "R %010llu ", static_cast<unsigned long long>(number));
  const std::string_view known(line);
  if (!known.starts_with(rest.substr(0, known.size()))) return false;
  if (rest.size() < kLine) return true;
  std::uint64_t length = 0;
  std::uint32_t checksum = 0;
  if (!readField(rest.substr(kLengthAt, kNumberWidth), 10, length) ||
      !readField(rest.substr(kChecksumAt, kChecksumWidth), 16, checksum) || rest[kLine - 1] != '\n')
    return false;
  const std::string_view payload = rest.substr(kLine);
  // A frame that is whole but for its length says so by its checksum.
  return length > payload.size() && checksumIn(journalFrame(number, payload)) != checksum;
}

}  // namespace

std::string journalFrame(std::uint64_t number, std::string_view payload) {
  char line[kLine + 1];
  std::snprintf(line, sizeof line, "R %010llu %010zu", static_cast<unsigned long long>(number),
                payload.size());
  const std::uint32_t checksum =
      checksumOf(payload, checksumOf(std::string_view(line).substr(kNumberAt, kChecksummed)));
  std::snprintf(line + kChecksumAt - 1, sizeof line - kChecksumAt + 1, " %08x\n", checksum);
  std::string frame;
  frame.reserve(kLine + payload.size());
  frame += line;
  frame += payload;
  return frame;
}

JournalScan scanJournal(std::string_view bytes) {
  JournalScan scan;
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::optional<Frame> frame = frameAt(bytes, at);
    if (!frame || frame->number != scan.payloads.size()) {
      scan.damaged = !isBeginning(bytes.substr(at), scan.payloads.size()) ||
                     anyFrameAfter(bytes, at, scan.payloads.size());
      break;
    }
    scan.payloads.push_back(frame->payload);
    at += kLine + frame->payload.size();
  }
  scan.wholeBytes = at;
  return scan;
}

}  // namespace lamp::controller
