#include "workbench/wire/escape.h"

#include <gtest/gtest.h>

namespace {

using workbench::Escape;
using workbench::escapeAt;

struct Case {
  const char* text;
  const char* stands;
};

TEST(Escape, StandsForWhatItsEncoderWrote) {
  for (const Case& row : {Case{"&amp;", "&"},
                          {"&quot;", "\""},
                          {"&apos;", "'"},
                          {"&#39;", "'"},
                          {"&#x27;", "'"},
                          {"&#X0027;", "'"},
                          {"&#0000000233;", "\xC3\xA9"},
                          {"&eacute;", "\xC3\xA9"},
                          {"&nbsp;", "\xC2\xA0"},
                          {"&yuml;", "\xC3\xBF"},
                          {"&euro;", "\xE2\x82\xAC"},
                          {"&#128161;", "\xF0\x9F\x92\xA1"},
                          {"\\\"", "\""},
                          {"\\\\", "\\"},
                          {"\\/", "/"},
                          {"\\n", "\n"},
                          {"\\u00e9", "\xC3\xA9"},
                          {"\\u00E9", "\xC3\xA9"},
                          {"\\ud83d\\uDCA1", "\xF0\x9F\x92\xA1"},
                          {"%26", "&"},
                          {"%c3", "\xC3"},
                          {"%C3", "\xC3"},
                          {"+", " "}}) {
    const Escape escape = escapeAt(std::string("x") + row.text + "6", 1);
    EXPECT_EQ(escape.meaning(), row.stands) << row.text;
    EXPECT_EQ(escape.size, std::string_view(row.text).size()) << row.text;
  }
}

TEST(Escape, WhatIsBrokenIsNone) {
  for (const char* text : {"a",
                           "&",
                           "&;",
                           "&amp",
                           "&unknown;",
                           "&#;",
                           "&#x;",
                           "&#12a;",
                           "&#xD800;",
                           "&#1114112;",
                           "&#0;",
                           "&# 65;",
                           "&#-5;",
                           "&#000000000000000000000065;",
                           "\\",
                           "\\x",
                           "\\u12",
                           "\\ud83d",
                           "\\ud83d\\u0041",
                           "\\u 123",
                           "%",
                           "%4",
                           "%4g",
                           "%-1",
                           "% 1"})
    EXPECT_EQ(escapeAt(text, 0).size, 0U) << text;
}

}  // namespace
