#include <gtest/gtest.h>

#include "host/text/basic_string.h"
#include "tests/support/printers.h"

namespace {

TEST(Format, FillsPlaceholdersInOrder) {
  EXPECT_EQ(XCBasicString::Format(u"%s: %d of %u (%c)", u"name", 3, 7U, u'x'), u"name: 3 of 7 (x)");
  EXPECT_EQ(XCBasicString::Format(u"%ls and %s", XCBasicString(u"a"), std::u16string(u"b")),
            u"a and b");
}

TEST(Format, PadsNumbersWithZerosAndEverythingElseWithBlanks) {
  struct Row {
    const char16_t* format;
    int value;
    const char16_t* expected;
  };
  const Row rows[] = {{u"%02d", 5, u"05"},
                      {u"%02d", 12, u"12"},
                      {u"%02d", 123, u"123"},
                      {u"%02d", -5, u"-5"},
                      {u"%04d", -5, u"-005"},
                      {u"%5d", 42, u"   42"},
                      {u"%5d", -42, u"  -42"},
                      {u"%04d", 0, u"0000"},
                      {u"%u", -1, u"4294967295"},
                      {u"%c", 65, u"A"},
                      {u"%s", 17, u"17"},
                      {u"%05s", 17, u"00017"},
                      {u"%d", 2147483647, u"2147483647"}};
  for (const Row& row : rows) EXPECT_EQ(XCBasicString::Format(row.format, row.value), row.expected);
  EXPECT_EQ(XCBasicString::Format(u"%05s", u"ab"), u"   ab");
  EXPECT_EQ(XCBasicString::Format(u"%2s", u"abc"), u"abc");
  EXPECT_EQ(XCBasicString::Format(u"%d", std::int64_t(-9223372036854775807LL - 1)),
            u"-9223372036854775808");
}

TEST(Format, AnArgumentOfAnotherTypeIsWrittenInItsOwnForm) {
  EXPECT_EQ(XCBasicString::Format(u"%d", u"text"), u"text");
  EXPECT_EQ(XCBasicString::Format(u"%c", u"text"), u"text");
  EXPECT_EQ(XCBasicString::Format(u"%d", u'A'), u"65");
  EXPECT_EQ(XCBasicString::Format(u"%s", u'A'), u"A");
}

TEST(Format, WhatIsNoPlaceholderStaysAsItStands) {
  EXPECT_EQ(XCBasicString::Format(u"100%%"), u"100%");
  EXPECT_EQ(XCBasicString::Format(u"100%"), u"100%");
  EXPECT_EQ(XCBasicString::Format(u"%x %d", 1), u"%x 1");
  EXPECT_EQ(XCBasicString::Format(u"%-5d|", 1), u"%-5d|");
  EXPECT_EQ(XCBasicString::Format(u"%n%f"), u"%n%f");
  EXPECT_EQ(XCBasicString::Format(u"a%05"), u"a%05");
}

TEST(Format, APlaceholderWithoutArgumentYieldsNothing) {
  EXPECT_EQ(XCBasicString::Format(u"[%s]"), u"[]");
  EXPECT_EQ(XCBasicString::Format(u"[%d%d]", 1), u"[1]");
  EXPECT_EQ(XCBasicString::Format(u"[%05d]"), u"[]");
}

TEST(Format, SurplusArgumentsAreLeftOut) {
  EXPECT_EQ(XCBasicString::Format(u"%d", 1, 2, u"x"), u"1");
}

TEST(Format, PlaceholdersInArgumentsAreNotFilledAgain) {
  EXPECT_EQ(XCBasicString::Format(u"%s %s", u"%s", u"%d"), u"%s %d");
}

TEST(Format, AnAbsurdWidthIsHeldAtALimit) {
  EXPECT_EQ(XCBasicString::Format(u"%99999999999999999999d", 1).Length(), 4096U);
}

TEST(BasicString, MidLeavesOutWhatLiesBeyondTheEnd) {
  const XCBasicString text(u"abcdef");
  EXPECT_EQ(text.Mid(2, 2), u"cd");
  EXPECT_EQ(text.Mid(4, 100), u"ef");
  EXPECT_EQ(text.Mid(6), u"");
  EXPECT_EQ(text.Mid(100, 3), u"");
  EXPECT_EQ(text.Left(3), u"abc");
  EXPECT_EQ(text.Left(0), u"");
}

TEST(BasicString, ComparesOrdinallyAndWithCase) {
  EXPECT_LT(XCBasicString(u"Z"), XCBasicString(u"a"));
  EXPECT_LT(XCBasicString(u"a"), XCBasicString(u"á"));
  EXPECT_NE(XCBasicString(u"a"), XCBasicString(u"A"));
  EXPECT_LT(XCBasicString(u"10"), XCBasicString(u"9"));
  EXPECT_TRUE(XCBasicString(u"x") == u"x");
}

TEST(BasicString, ToIntReadsTheLeadingDigits) {
  struct Row {
    const char16_t* text;
    int value;
  };
  const Row rows[] = {{u"", 0},
                      {u"0", 0},
                      {u"42", 42},
                      {u"-42", -42},
                      {u"+42", 42},
                      {u"  42", 42},
                      {u"\t\n\v\f\r 7", 7},
                      {u"42abc", 42},
                      {u"4 2", 4},
                      {u"abc", 0},
                      {u"- 4", 0},
                      {u"--4", 0},
                      {u"007", 7},
                      {u"2147483647", 2147483647},
                      {u"2147483648", 2147483647},
                      {u"-2147483648", -2147483647 - 1},
                      {u"-2147483649", -2147483647 - 1},
                      {u"99999999999999999999999999999999999999999", 2147483647},
                      {u"-99999999999999999999999999999999999999999", -2147483647 - 1},
                      {u"3.9", 3},
                      {u"\u0664\u0662", 0}};
  for (const Row& row : rows)
    EXPECT_EQ(XCBasicString(row.text).ToInt(), row.value) << XCBasicString(row.text).ToUtf8();
}

TEST(BasicString, DecimalWritesEveryInteger) {
  EXPECT_EQ(host::decimal(0), u"0");
  EXPECT_EQ(host::decimal(-17), u"-17");
  EXPECT_EQ(host::decimal(9223372036854775807LL), u"9223372036854775807");
}

}  // namespace
