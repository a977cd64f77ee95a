#include "workbench/wire/uri_parameters.h"

#include <gtest/gtest.h>

namespace {

TEST(UriParameters, ValuesAreDecodedAndBrokenEscapesStay) {
  EXPECT_EQ(workbench::parameterValue("x=1&y=a%2Bb%zz%4", "y"), "a+b%zz%4");
  EXPECT_EQ(workbench::parameterValue("x=1&x=2", "x"), "1");
  EXPECT_EQ(workbench::parameterValue("x&y=2", "x"), "");
  EXPECT_EQ(workbench::parameterValue("f%74p=a+b", "ftp"), "a+b") << "a plus sign is one in a URI";
}

TEST(UriParameters, StandInTheirOrderAsTheyAreWritten) {
  const auto found = workbench::uriParameters("a=1&&b&c=d=e%26");
  ASSERT_EQ(found.size(), 4U);
  EXPECT_EQ(found[0].name, "a");
  EXPECT_EQ(found[0].value, "1");
  EXPECT_EQ(found[1].name, "");
  EXPECT_EQ(found[2].name, "b");
  EXPECT_EQ(found[2].value, "");
  EXPECT_EQ(found[3].name, "c");
  EXPECT_EQ(found[3].value, "d=e%26");
}

}  // namespace
