#include "controller/http/memory_quota.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

TEST(MemoryQuota, GivesNoMoreThanThereIsAndTakesItBack) {
  MemoryQuota budget(100);
  MemoryQuota::Share first(budget);
  EXPECT_TRUE(first.take(60));
  {
    MemoryQuota::Share second(budget);
    EXPECT_TRUE(second.take(40));
    EXPECT_FALSE(second.take(1));
    EXPECT_FALSE(first.take(1));
  }
  MemoryQuota::Share third(budget);
  EXPECT_TRUE(third.take(40));
}

}  // namespace
}  // namespace lamp::controller
