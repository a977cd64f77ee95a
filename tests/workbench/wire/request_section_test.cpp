#include "workbench/wire/request_section.h"

#include <gtest/gtest.h>

namespace {

TEST(RequestSection, IsTheFirstChildOfTheRootWithASectionsName) {
  struct Row {
    const char* xml;
    const char* section;
  };
  for (const Row& row : {Row{"<?xml version=\"1.0\"?>\n<deviceCfg><L04/></deviceCfg>", "L04"},
                         {"<deviceCfg><E01 TimeZone=\"4\"/></deviceCfg>", "E01"},
                         {"<deviceCfg><firmwareFile/><E03/></deviceCfg>", "E03"},
                         {"<deviceCfg><E012/></deviceCfg>", ""},
                         {"<deviceCfg><e01/></deviceCfg>", ""},
                         {"<deviceCfg><main><L01/></main></deviceCfg>", ""},
                         {"<deviceCfg/>", ""}}) {
    XmlDocument document;
    ASSERT_TRUE(document.Parse(row.xml));
    EXPECT_EQ(workbench::sectionOf(&document), row.section) << row.xml;
  }
  const XmlDocument empty;
  EXPECT_EQ(workbench::sectionOf(&empty), "");
  EXPECT_EQ(workbench::sectionOf(nullptr), "");
}

}  // namespace
