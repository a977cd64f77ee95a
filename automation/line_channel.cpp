#include "automation/line_channel.h"

#include <unistd.h>

#include <cerrno>

namespace automation {

bool LineChannel::fill() {
  constexpr std::size_t BlockBytes = 64 * 1024;
  buffer_.resize(BlockBytes);
  at_ = 0;
  for (;;) {
    const ssize_t count = ::read(input_, buffer_.data(), buffer_.size());
    if (count < 0 && errno == EINTR) continue;
    buffer_.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
  }
}

LineChannel::Read LineChannel::read(std::string& line) {
  line.clear();
  bool tooLong = false;
  bool any = false;
  for (;;) {
    if (at_ == buffer_.size() && !fill()) {
      if (!any) return Read::end;
      break;
    }
    any = true;
    const std::size_t end = buffer_.find('\n', at_);
    const std::size_t stop = end == std::string::npos ? buffer_.size() : end;
    tooLong = tooLong || line.size() + (stop - at_) > lineLimit_;
    if (tooLong)
      std::string().swap(line);
    else
      line.append(buffer_, at_, stop - at_);
    at_ = end == std::string::npos ? stop : stop + 1;
    if (end != std::string::npos) break;
  }
  return tooLong ? Read::tooLong : Read::line;
}

bool LineChannel::write(std::string line) {
  line += '\n';
  std::string_view left = line;
  while (!left.empty()) {
    const ssize_t count = ::write(output_, left.data(), left.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    left.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace automation
