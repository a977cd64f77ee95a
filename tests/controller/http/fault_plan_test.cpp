#include "controller/http/fault_plan.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

Fault read(const std::string& text) {
  Fault fault;
  EXPECT_EQ(parseFault(text, fault), "") << text;
  return fault;
}

TEST(FaultPlan, ReadsArgumentCommandAndCount) {
  const Fault fault = read("refuse:no @home#1@2#3");
  EXPECT_EQ(fault.kind, FaultKind::Refuse);
  EXPECT_EQ(fault.argument, "no @home#1");
  EXPECT_EQ(fault.command, 2);
  EXPECT_EQ(fault.remaining, 3);
  EXPECT_EQ(read("delay:7").number, 7);
  EXPECT_EQ(read("delay").number, 1);
  EXPECT_EQ(read("clock-jump:-60").number, -60);
  EXPECT_EQ(read("oversize:70MiB").number, 70L << 20U);
  EXPECT_EQ(read("oversize:2KiB").number, 2048);
  EXPECT_EQ(read("deep:10000").number, 10000);
  EXPECT_EQ(read("no-answer@52").command, 52);
}

TEST(FaultPlan, SaysWhatIsWrongWithAFault) {
  const std::pair<const char*, const char*> bad[] = {{"", "no fault"},
                                                     {"bogus", "there are no-answer, delay"},
                                                     {"delay@x", "no fault"},
                                                     {"delay#", "no fault"},
                                                     {"delay:x", "takes a number"},
                                                     {"oversize:2GiB", "takes a size"},
                                                     {"oversize:9999999999", "takes a size"},
                                                     {"dtd:1", "takes no argument"}};
  for (const auto& [text, said] : bad) {
    Fault fault;
    EXPECT_NE(parseFault(text, fault).find(said), std::string::npos) << text;
  }
}

TEST(FaultPlan, CountsDownAndKeepsToItsCommand) {
  FaultPlan plan;
  plan.add(read("delay#2"));
  plan.add(read("empty@1"));
  EXPECT_EQ(plan.take(1, false).size(), 2U);
  EXPECT_EQ(plan.take(2, true).size(), 1U);
  EXPECT_EQ(plan.take(2, true).size(), 0U);
  EXPECT_EQ(plan.list(), std::vector<std::string>{"empty@1"});
  plan.clear();
  EXPECT_TRUE(plan.take(1, false).empty());
}

TEST(FaultPlan, RefusesEverySecondWriteAndNoRead) {
  FaultPlan plan;
  plan.add(read("refuse-every-second-write"));
  EXPECT_TRUE(plan.take(2, true).empty());
  EXPECT_TRUE(plan.take(1, false).empty());
  EXPECT_EQ(plan.take(2, true).size(), 1U);
  EXPECT_TRUE(plan.take(2, true).empty());
  EXPECT_EQ(plan.take(2, true).size(), 1U);
}

}  // namespace
}  // namespace lamp::controller
