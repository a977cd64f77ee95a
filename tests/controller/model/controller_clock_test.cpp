#include "controller/model/controller_clock.h"

#include <gtest/gtest.h>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller {
namespace {

using namespace std::chrono_literals;
using test::ManualTime;

class ControllerClockTest : public testing::Test {
 protected:
  static constexpr Moment kStart{1000000000s};
  ManualTime time{kStart};
  ControllerClock clock{time};
};

TEST_F(ControllerClockTest, RunsWithItsSource) {
  EXPECT_EQ(clock.now(), kStart);
  time.pass(90s);
  EXPECT_EQ(clock.now(), kStart + 90s);
}

TEST_F(ControllerClockTest, RunsOnFromWhereItWasSet) {
  clock.set(kStart + 5h);
  time.pass(10s);
  EXPECT_EQ(clock.now(), kStart + 5h + 10s);
  EXPECT_EQ(clock.offset(), 5h);
}

TEST_F(ControllerClockTest, RunsFasterWithoutAJump) {
  time.pass(10s);
  clock.setSpeed(600);
  EXPECT_EQ(clock.now(), kStart + 10s);
  time.pass(2s);
  EXPECT_EQ(clock.now(), kStart + 10s + 20min);
  clock.setSpeed(1);
  time.pass(1s);
  EXPECT_EQ(clock.now(), kStart + 11s + 20min);
}

TEST_F(ControllerClockTest, StandsStillWhilePaused) {
  clock.setPaused(true);
  time.pass(1h);
  EXPECT_EQ(clock.now(), kStart);
  clock.jump(-60s);
  EXPECT_EQ(clock.now(), kStart - 60s);
  clock.setPaused(false);
  time.pass(1s);
  EXPECT_EQ(clock.now(), kStart - 59s);
}

TEST_F(ControllerClockTest, KeepsItsOffsetOverARestart) {
  clock.jump(3h);
  time.pass(10s);
  ControllerClock again(time);
  again.setOffset(clock.offset());
  EXPECT_EQ(again.now(), clock.now());
}

}  // namespace
}  // namespace lamp::controller
