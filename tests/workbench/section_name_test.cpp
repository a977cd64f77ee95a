#include "workbench/section_name.h"

#include <gtest/gtest.h>

namespace {

TEST(SectionName, IsTheFirstSectionInTheRoot) {
  struct Row {
    const char* xml;
    const char* section;
  };
  for (const Row& row : {Row{"<?xml version=\"1.0\"?>\n<deviceCfg><L04/></deviceCfg>", "L04"},
                         {"<deviceCfg><E01 TimeZone=\"4\"/></deviceCfg>", "E01"},
                         {"<deviceCfg><E012/></deviceCfg>", ""},
                         {"<deviceCfg><main/></deviceCfg>", ""},
                         {"<deviceCfg></deviceCfg>", ""},
                         {"<deviceCfg/>", ""}}) {
    EXPECT_EQ(workbench::sectionOf(std::string_view(row.xml)), row.section) << row.xml;
    XmlDocument document;
    ASSERT_TRUE(document.Parse(row.xml));
    EXPECT_EQ(workbench::sectionOf(&document), row.section) << row.xml;
  }
  EXPECT_EQ(workbench::sectionOf(std::string_view()), "");
  EXPECT_EQ(workbench::sectionOf(nullptr), "");
}

TEST(SectionName, WhatIsWrittenIsReadUnderTheSameNumberAndOrdersAreNot) {
  EXPECT_EQ(workbench::readSectionOf("E04"), "L04");
  EXPECT_EQ(workbench::readSectionOf("E17"), "L17");
  for (const char* order : {"E03", "E08", "E09", "E11", "C06", "", "L04"})
    EXPECT_EQ(workbench::readSectionOf(order), "") << order;
}

}  // namespace
