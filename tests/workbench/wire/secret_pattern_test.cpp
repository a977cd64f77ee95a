#include "workbench/wire/secret_pattern.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using workbench::SecretPattern;
using workbench::TextSpan;
using Spans = std::vector<TextSpan>;

Spans find(const char* secret, std::string_view text) {
  Spans found;
  SecretPattern(secret).find(text, found);
  return found;
}

// Percent-encoded, with or without capitals, whole or only what must be.
std::string percentEncoded(std::string_view text, bool capitals, bool all) {
  const char* digits = capitals ? "0123456789ABCDEF" : "0123456789abcdef";
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                       (byte >= '0' && byte <= '9');
    if (plain && !all)
      out += c;
    else
      out += std::string("%") + digits[byte >> 4] + digits[byte & 15];
  }
  return out;
}

TEST(SecretPattern, IsFoundInEverySpelling) {
  constexpr const char* Secret = "p<w> &\"x'\\\xC3\xB1";
  for (const std::string& spelling :
       {std::string(Secret), std::string("p&lt;w&gt; &amp;&quot;x&apos;\\\xC3\xB1"),
        std::string("p&lt;w> &amp;&#34;x&#39;\\&ntilde;"),
        std::string("p&#60;w&#x3e;&#32;&#38;&#x22;x&#x0027;&#92;&#241;"),
        std::string("p<w> &\\\"x'\\\\\xC3\xB1"),
        std::string("p\\u003cw\\u003E \\u0026\\u0022x\\u0027\\u005c\\u00f1"),
        percentEncoded(Secret, true, false), percentEncoded(Secret, false, false),
        percentEncoded(Secret, true, true), percentEncoded(Secret, false, true),
        std::string("p%3Cw%3E+%26%22x%27%5C%C3%B1"),
        // One encoder over the other.
        std::string("p&lt;w&gt; &amp;\\\"x'\\\\\xC3\xB1")}) {
    const std::string text = "the answer p<w> to " + spelling + " is no";
    EXPECT_EQ(find(Secret, text), (Spans{{19, 19 + spelling.size()}})) << spelling;
    EXPECT_TRUE(SecretPattern(Secret).isIn(text)) << spelling;
  }
}

// What looks like an escape may be what was typed.
TEST(SecretPattern, AsTypedAlsoWhereItLooksLikeAnEscape) {
  EXPECT_EQ(find("100%25ab", "is 100%25ab"), (Spans{{3, 11}}));
  EXPECT_EQ(find("100%25ab", "is 100%2525ab"), (Spans{{3, 13}}));
  EXPECT_EQ(find("a&amp;bc", "a&amp;bc a&amp;amp;bc"), (Spans{{0, 8}, {9, 21}}));
  EXPECT_EQ(find("one+two", "one+two one%2Btwo"), (Spans{{0, 7}, {8, 17}}));
  EXPECT_EQ(find("one two", "one+two"), (Spans{{0, 7}}));
}

TEST(SecretPattern, NothingElseIsFound) {
  for (const char* text :
       {"", "hunter", "Hunter2", "hunte", "hunter 2", "hunter&#51;", "hunter%33"})
    EXPECT_EQ(find("hunter2", text), Spans()) << text;
  EXPECT_FALSE(SecretPattern("hunter2").isIn("hunter 2"));
}

TEST(SecretPattern, EveryOccurrenceIsCoveredAlsoWhereTheyOverlap) {
  EXPECT_EQ(find("abcabc", "abcabcabc-abcabc"), (Spans{{0, 6}, {6, 9}, {10, 16}}));
  EXPECT_EQ(find("aaaaaa", "xaaaaaaaax"), (Spans{{1, 7}, {7, 8}, {8, 9}}));
  EXPECT_EQ(find("a", "aXaa"), (Spans{{0, 1}, {2, 3}, {3, 4}}));
}

TEST(SecretPattern, AsLongAsItMayBe) {
  const std::string secret = std::string(SecretPattern::MostBytes - 1, 'a') + "b";
  EXPECT_EQ(find(secret.c_str(), std::string(100, 'a') + "b"), (Spans{{37, 101}}));
  EXPECT_EQ(find(secret.c_str(), std::string(100, 'a')), Spans());
}

TEST(SecretPattern, AtAPlaceTheLongestOneIsTold) {
  const SecretPattern secret("a b");
  EXPECT_EQ(secret.endOfOneAt("xa+bx", 1), 4U);
  EXPECT_EQ(secret.endOfOneAt("xa%20bx", 1), 6U);
  EXPECT_EQ(secret.endOfOneAt("xxa b", 1), 1U);
  EXPECT_EQ(secret.endOfOneAt("a b", 3), 3U);
}

TEST(SecretPattern, TheBeginningOfOneAtACutEndIsTold) {
  const SecretPattern secret("hunter&2");
  EXPECT_EQ(secret.beginningAtEnd("it is hunt"), 6U);
  EXPECT_EQ(secret.beginningAtEnd("it is hunter&"), 6U);
  EXPECT_EQ(secret.beginningAtEnd("it is hunter&am"), 6U) << "cut in the midst of an escape";
  EXPECT_EQ(secret.beginningAtEnd("it is hunter%2"), 6U);
  EXPECT_EQ(secret.beginningAtEnd("it is hunting"), 13U);
  EXPECT_EQ(SecretPattern("hunter2").beginningAtEnd("it is hunter2"), 13U) << "a whole one";
  EXPECT_EQ(secret.beginningAtEnd(""), 0U);
  EXPECT_EQ(secret.beginningAtEnd(std::string(100'000, 'h')), 99'999U);
}

// A cost that grew with the square of the text would end in the test's time limit.
TEST(SecretPattern, ManyCandidatesCostNoMoreThanTheirText) {
  constexpr std::size_t Size = 1U << 20;
  const std::string secret = std::string(SecretPattern::MostBytes - 1, 'a') + "b";
  EXPECT_FALSE(SecretPattern(secret).isIn(std::string(Size, 'a')));
  for (const char* piece : {"aaaaaa", "a", "&#97;", "&#", "%6", "\\u0061", "&", "+"}) {
    std::string text;
    while (text.size() < Size) text += piece;
    Spans found;
    SecretPattern("aaaaaa").find(text, found);
    std::size_t covered = 0;
    for (const TextSpan& span : found) covered += span.to - span.from;
    EXPECT_EQ(covered, found.empty() ? 0 : text.size()) << piece;
  }
}

}  // namespace
