#include "workbench/json_writer.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "host/text/basic_string.h"

namespace {

using workbench::JsonWriter;

TEST(JsonWriter, WritesWhatAReaderReads) {
  JsonWriter out;
  out.beginObject().member("a", 1).name("b").beginList().value(true).null().beginObject();
  out.endObject().beginList().endList().value("x").endList();
  out.name("c").beginObject().member("d", std::size_t{7}).endObject().endObject();
  EXPECT_EQ(out.text(), R"({"a":1,"b":[true,null,{},[],"x"],"c":{"d":7}})");
}

TEST(JsonWriter, EveryCharacterComesBack) {
  std::u16string all;
  for (char16_t c = 0; c < 0x300; ++c) all += c;
  all += u"\u2028\U0001F4A1\uFFFF";
  JsonWriter out;
  out.value(std::u16string_view(all));
  const auto read = nlohmann::json::parse(out.text());
  EXPECT_EQ(XCBasicString::FromUtf8(read.get<std::string>()), all);
}

TEST(JsonWriter, WhatIsNoTextBecomesAReplacement) {
  JsonWriter out;
  out.beginList().value(std::u16string_view(u"a\xD800z")).value(std::string_view("a\xFFz"));
  out.endList();
  EXPECT_EQ(out.text(), "[\"a\xEF\xBF\xBDz\",\"a\xEF\xBF\xBDz\"]");
}

TEST(JsonWriter, MembersWrittenElsewhereStandBetweenOthers) {
  JsonWriter inner;
  inner.member("x", 1).member("y", 2);
  JsonWriter out;
  out.beginObject().member("a", true).members(inner.text()).members("").member("b", false);
  out.endObject();
  EXPECT_EQ(out.text(), R"({"a":true,"x":1,"y":2,"b":false})");
}

}  // namespace
