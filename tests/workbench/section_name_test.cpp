#include "workbench/section_name.h"

#include <gtest/gtest.h>

namespace {

TEST(SectionName, WhatIsWrittenIsReadUnderTheSameNumberAndOrdersAreNot) {
  EXPECT_EQ(workbench::readSectionOf("E04"), "L04");
  EXPECT_EQ(workbench::readSectionOf("E17"), "L17");
  for (const char* order : {"E03", "E08", "E09", "E11", "C06", "", "L04"})
    EXPECT_EQ(workbench::readSectionOf(order), "") << order;
}

}  // namespace
