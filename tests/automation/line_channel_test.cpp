#include "automation/line_channel.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace {

using automation::LineChannel;

// A channel whose input is this text, which must fit into a pipe.
class Lines {
 public:
  explicit Lines(const std::string& input, std::size_t limit = LineChannel::DefaultLineLimit)
      : channel_(makeInput(input), STDERR_FILENO, limit) {}
  ~Lines() { ::close(input_); }

  std::string next() {
    std::string line;
    switch (channel_.read(line)) {
      case LineChannel::Read::line:
        return line;
      case LineChannel::Read::tooLong:
        return "(too long)";
      default:
        return "(end)";
    }
  }

 private:
  int makeInput(const std::string& text) {
    int ends[2];
    if (::pipe(ends) != 0) return -1;
    EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    ::close(ends[1]);
    return input_ = ends[0];
  }
  int input_ = -1;
  LineChannel channel_;
};

TEST(LineChannel, ReadsLinesAndALastOneWithoutABreak) {
  Lines lines("a\n\nbc");
  EXPECT_EQ(lines.next(), "a");
  EXPECT_EQ(lines.next(), "");
  EXPECT_EQ(lines.next(), "bc");
  EXPECT_EQ(lines.next(), "(end)");
  EXPECT_EQ(lines.next(), "(end)");
}

TEST(LineChannel, NothingIsTheEnd) {
  EXPECT_EQ(Lines("").next(), "(end)");
}

TEST(LineChannel, ALineOverTheLimitIsPassedOver) {
  Lines lines("1234\n12345\n1\n", 4);
  EXPECT_EQ(lines.next(), "1234");
  EXPECT_EQ(lines.next(), "(too long)");
  EXPECT_EQ(lines.next(), "1");
  EXPECT_EQ(lines.next(), "(end)");
}

TEST(LineChannel, AWriteThatNobodyReadsFails) {
  std::signal(SIGPIPE, SIG_IGN);
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::close(ends[0]);
  LineChannel channel(STDIN_FILENO, ends[1]);
  EXPECT_FALSE(channel.write("x"));
  ::close(ends[1]);
}

}  // namespace
