#include "controller/http/body_budget.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

TEST(BodyBudget, GivesNoMoreThanThereIsAndTakesItBack) {
  BodyBudget budget(100);
  BodyBudget::Share first(budget);
  EXPECT_TRUE(first.take(60));
  {
    BodyBudget::Share second(budget);
    EXPECT_TRUE(second.take(40));
    EXPECT_FALSE(second.take(1));
    EXPECT_TRUE(second.refused());
    EXPECT_FALSE(first.take(1));
  }
  BodyBudget::Share third(budget);
  EXPECT_TRUE(third.take(40));
  EXPECT_FALSE(third.refused());
}

}  // namespace
}  // namespace lamp::controller
