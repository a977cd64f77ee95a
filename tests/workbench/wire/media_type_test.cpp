#include "workbench/wire/media_type.h"

#include <gtest/gtest.h>

namespace {

using workbench::isMediaType;

TEST(MediaType, IsComparedWithoutParametersAndWithoutRegardToCase) {
  for (const char* same : {"text/plain", "Text/PLAIN", "text/plain;charset=utf-8",
                           " text/plain\t; charset=utf-8", "text/plain;"})
    EXPECT_TRUE(isMediaType(same, "text/plain")) << same;
}

TEST(MediaType, IsComparedWhole) {
  for (const char* other : {"text/plainer", "text/plai", "text", "xtext/plain", "text/plain, a/b",
                            "text/plain x", "", ";text/plain", "application/xml"})
    EXPECT_FALSE(isMediaType(other, "text/plain")) << other;
}

}  // namespace
