#include "host/text/utf.h"

#include <gtest/gtest.h>

#include "host/text/basic_string.h"
#include "tests/support/printers.h"

namespace {

TEST(Utf, EveryCodePointRoundTrips) {
  for (char32_t c = 1; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 37) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string narrow;
    std::u16string wide;
    host::appendCodePoint(narrow, c);
    host::appendCodePoint(wide, c);
    ASSERT_EQ(host::toUtf16(narrow), wide) << std::hex << unsigned(c);
    ASSERT_EQ(host::toUtf8(wide), narrow) << std::hex << unsigned(c);
    std::size_t at = 0;
    bool malformed = false;
    ASSERT_EQ(host::nextCodePoint(std::string_view(narrow), at, &malformed), c);
    ASSERT_EQ(at, narrow.size());
    ASSERT_FALSE(malformed);
  }
}

TEST(Utf, KnownEncodings) {
  EXPECT_EQ(host::toUtf16("a\xC3\xB1\xE2\x82\xAC\xF0\x9F\x92\xA1"), u"a\u00F1\u20AC\U0001F4A1");
  EXPECT_EQ(host::toUtf8(u"a\u00F1\u20AC\U0001F4A1"), "a\xC3\xB1\xE2\x82\xAC\xF0\x9F\x92\xA1");
}

TEST(Utf, EachMalformedSequenceBecomesOneReplacement) {
  struct Row {
    const char* utf8;
    const char16_t* expected;
    const char* what;
  };
  const Row rows[] = {{"a\x80z", u"a\uFFFDz", "a trailing byte alone"},
                      {"a\xFFz", u"a\uFFFDz", "a byte that never occurs"},
                      {"a\xC3z", u"a\uFFFDz", "a trailing byte missing"},
                      {"a\xC3", u"a\uFFFD", "cut at the end"},
                      {"a\xE2\x82z", u"a\uFFFDz", "one of two trailing bytes missing"},
                      {"\xF0\x9F\x92", u"\uFFFD", "one of three trailing bytes missing at the end"},
                      {"\xC0\xAF", u"\uFFFD\uFFFD", "a lead that only overlong forms have"},
                      {"\xE0\x80\xAFz", u"\uFFFDz", "an overlong form"},
                      {"\xF0\x80\x80\xAFz", u"\uFFFDz", "an overlong form of four bytes"},
                      {"\xED\xA0\x80z", u"\uFFFDz", "a surrogate"},
                      {"\xF4\x90\x80\x80z", u"\uFFFDz", "beyond the last code point"},
                      {"\xF5z", u"\uFFFDz", "a lead beyond the last code point"}};
  for (const Row& row : rows) EXPECT_EQ(host::toUtf16(row.utf8), row.expected) << row.what;
}

TEST(Utf, AnUnpairedSurrogateBecomesAReplacement) {
  EXPECT_EQ(host::toUtf8(std::u16string(u"a") + char16_t(0xD83D) + u"z"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(host::toUtf8(std::u16string(u"a") + char16_t(0xDCA1) + u"z"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(host::toUtf8(std::u16string(1, char16_t(0xD83D))), "\xEF\xBF\xBD");
  std::size_t at = 0;
  bool malformed = false;
  host::nextCodePoint(std::u16string_view(u"\xDCA1x"), at, &malformed);
  EXPECT_TRUE(malformed);
  EXPECT_EQ(at, 1U);
}

TEST(Utf, EveryPairOfBytesMovesForwardAndYieldsText) {
  for (int first = 0; first < 256; ++first)
    for (int second = 0; second < 256; ++second) {
      const std::string bytes = {static_cast<char>(first), static_cast<char>(second)};
      const std::string again = host::toUtf8(host::toUtf16(bytes));
      ASSERT_EQ(host::toUtf16(again), host::toUtf16(bytes)) << first << " " << second;
    }
}

TEST(BasicString, FromUtf8AndBack) {
  EXPECT_EQ(XCBasicString::FromUtf8("a\xC3\xB1").ToUtf8(), "a\xC3\xB1");
  EXPECT_EQ(XCBasicString::FromUtf8("\xC3"), u"\uFFFD");
  EXPECT_EQ(XCBasicString::FromUtf8(std::string_view("a\0b", 3)).Length(), 3U);
}

}  // namespace
