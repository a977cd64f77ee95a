#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <vector>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;

// What a page sends: every row, with the powers that it shows.
std::string allRows(const std::string& date, const std::vector<std::string>& ids,
                    const std::vector<int>& powers) {
  std::string text = "<E05 ActDate=\"" + date + "\">";
  for (std::size_t i = 0; i < ids.size(); ++i) {
    text += "<Node nodeId=\"" + ids[i] + "\"><Interval time=\"600\" power=\"" +
            std::to_string(powers[i]) + "\"/></Node>";
  }
  return text + "</E05>";
}

int inForce(const ControllerRig& rig, const std::string& id) {
  const SectionStore& store = rig.controller.settings().inForce();
  return store.row(*store.find(id), Family::Power).attribute("power").as_int();
}

std::vector<int> shown(ControllerRig& rig) {
  std::vector<int> powers;
  for (const pugi::xml_node row : rig.read("L05").children())
    powers.push_back(row.attribute("power").as_int());
  return powers;
}

TEST(WaitingRows, AWriteOfOtherRowsNeitherBringsThemForwardNorTakesThemBack) {
  ControllerRig rig;
  const std::vector<std::string> ids = rig.nodeIds();
  ASSERT_EQ(rig.write(allRows("20250315110000W", ids, {100, 100, 100})), 200);
  ASSERT_EQ(rig.write(allRows("20250315210000W", ids, {55, 100, 100})), 200);
  ASSERT_EQ(rig.write(allRows("20250315120000W", ids, {55, 66, 100})), 200);
  EXPECT_EQ(shown(rig), (std::vector<int>{55, 66, 100}));
  EXPECT_EQ(inForce(rig, ids[0]), 100) << "it waits for 21:00";
  EXPECT_EQ(inForce(rig, ids[1]), 66);
  rig.time.pass(9h + 5min);
  rig.controller.advance();
  EXPECT_EQ(inForce(rig, ids[0]), 55);
  EXPECT_EQ(inForce(rig, ids[1]), 66) << "it is not taken back";
  EXPECT_EQ(rig.controller.lampView(ids[0])->power, 55);
  EXPECT_EQ(rig.controller.lampView(ids[1])->power, 66);
}

struct ProgramCase {
  const char* write;
  const char* read;
  const char* values;
  const char* attribute;
};

TEST(WaitingRows, TheSameHoldsForProgramsAndThresholds) {
  const ProgramCase cases[] = {{"E06", "L06", "Interval", "power1"},
                               {"E07", "L07", "Alarms", "blinkTimes"},
                               {"E17", "L17", "Interval", "power2"}};
  for (const ProgramCase& each : cases) {
    ControllerRig rig;
    const std::vector<std::string> ids = rig.nodeIds();
    const auto write = [&](const std::string& date, const char* a, const char* b) {
      const auto row = [&](const std::string& id, const char* value) {
        return "<Node nodeId=\"" + id + "\"><" + each.values + " " + each.attribute + "=\"" +
               value + "\"/></Node>";
      };
      return rig.write(std::string("<") + each.write + " ActDate=\"" + date + "\">" +
                       row(ids[0], a) + row(ids[1], b) + "</" + each.write + ">");
    };
    ASSERT_EQ(write("20250314000000W", "1", "2"), 200) << rig.refusal;
    ASSERT_EQ(write("20250315210000W", "11", "2"), 200);
    ASSERT_EQ(write("20250315120000W", "11", "22"), 200);
    const auto value = [&](std::size_t node) {
      for (const pugi::xml_node row :
           rig.controller.settings().inForce().section(each.read).children()) {
        if (row.attribute("Id").value() == ids[node])
          return std::string(row.attribute(each.attribute).value());
      }
      return std::string();
    };
    EXPECT_EQ(value(0), "1") << each.write;
    EXPECT_EQ(value(1), "22") << each.write;
    rig.time.pass(10h);
    rig.controller.advance();
    EXPECT_EQ(value(0), "11") << each.write;
    EXPECT_EQ(value(1), "22") << each.write;
  }
}

TEST(WaitingRows, OfInputsAndOutputsEveryValueAndEveryLineWaitsForItself) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E13 ActDate=\"20250315210000W\" offsetSunSet=\"11\">"
                      "<Output Dir=\"1\" On=\"Y\"/></E13>"),
            200)
      << rig.refusal;
  ASSERT_EQ(rig.write("<E13 ActDate=\"20250315120000W\" offsetSunSet=\"11\" offsetSunRise=\"22\">"
                      "<Output Dir=\"1\" On=\"Y\"/><Output Dir=\"2\" On=\"Y\"/></E13>"),
            200);
  const auto section = [&] { return rig.controller.settings().inForce().section("L13"); };
  const auto on = [&](const char* number) {
    return std::string(
        section().find_child_by_attribute("Output", "Dir", number).attribute("On").value());
  };
  EXPECT_STREQ(rig.read("L13").attribute("offsetSunSet").value(), "11");
  EXPECT_STREQ(rig.read("L13").attribute("offsetSunRise").value(), "22");
  EXPECT_STRNE(section().attribute("offsetSunSet").value(), "11");
  EXPECT_STREQ(section().attribute("offsetSunRise").value(), "22");
  EXPECT_NE(on("1"), "Y");
  EXPECT_EQ(on("2"), "Y");
  rig.time.pass(10h);
  rig.controller.advance();
  EXPECT_STREQ(section().attribute("offsetSunSet").value(), "11");
  EXPECT_STREQ(section().attribute("offsetSunRise").value(), "22");
  EXPECT_EQ(on("1"), "Y");
  EXPECT_EQ(on("2"), "Y");
}

TEST(WaitingRows, TheBlacklistIsTheLatestListWhoseDateHasCome) {
  ControllerRig rig;
  const std::vector<std::string> ids = rig.nodeIds();
  const auto list = [&](const char* date, const std::string& id) {
    return rig.write(std::string("<E09 ActDate=\"") + date + "\"><Node nodeId=\"" + id +
                     "\"/></E09>");
  };
  const auto ignored = [&] {
    std::vector<bool> all;
    const SectionStore& store = rig.controller.settings().inForce();
    for (const std::string& id : ids) all.push_back(store.isBlacklisted(*store.find(id)));
    return all;
  };
  ASSERT_EQ(list("20250315210000W", ids[0]), 200);
  ASSERT_EQ(list("20250315200000W", ids[1]), 200);
  EXPECT_EQ(ignored(), (std::vector<bool>{false, false, false}));
  EXPECT_EQ(rig.nodeIds(), (std::vector<std::string>{ids[0], ids[2]})) << "sent last";
  rig.time.pass(8h);
  rig.controller.advance();
  EXPECT_EQ(ignored(), (std::vector<bool>{false, true, false}));
  EXPECT_EQ(rig.nodeIds(), (std::vector<std::string>{ids[0], ids[2]}));
  rig.time.pass(1h);
  rig.controller.advance();
  EXPECT_EQ(ignored(), (std::vector<bool>{true, false, false}));
  EXPECT_EQ(rig.nodeIds(), (std::vector<std::string>{ids[2], ids[1]}))
      << "who leaves it comes last";
}

TEST(WaitingRows, WhatWaitsOutlivesARestartAsItIsShown) {
  ControllerRig rig;
  const std::vector<std::string> ids = rig.nodeIds();
  ASSERT_EQ(rig.write(allRows("20250315210000W", ids, {55, 100, 100})), 200);
  ASSERT_EQ(rig.write(allRows("20250315120000W", ids, {20, 100, 100})), 200);
  ASSERT_EQ(rig.write("<E09 ActDate=\"20250315230000W\"><Node nodeId=\"" + ids[2] + "\"/></E09>"),
            200);
  ControllerRig again;
  ASSERT_EQ(again.controller.loadState(rig.state()), "");
  EXPECT_EQ(again.state(), rig.state());
  EXPECT_EQ(shown(again), (std::vector<int>{20, 100}));
  again.time.pass(10h);
  again.controller.advance();
  EXPECT_EQ(shown(again), (std::vector<int>{55, 100}));
}

// The rule itself, without sections: what waits of a row, and who is right.
class Model {
 public:
  struct Value {
    int power = 100;
    int sent = -1;
    seconds due{0};
  };
  static constexpr std::size_t Nodes = 3;

  void write(const std::vector<int>& powers, seconds due, seconds now) {
    ++count_;
    for (std::size_t row = 0; row < Nodes; ++row) {
      if (powers[row] == shown[row]) continue;
      shown[row] = powers[row];
      if (due <= now) {
        present[row] = powers[row];
      } else {
        waiting_[row].push_back(Value{powers[row], count_, due});
      }
    }
  }

  void advance(seconds now) {
    for (std::size_t row = 0; row < Nodes; ++row) {
      auto& list = waiting_[row];
      for (;;) {
        const auto next = std::min_element(list.begin(), list.end(), [](auto& a, auto& b) {
          return std::pair(a.due, a.sent) < std::pair(b.due, b.sent);
        });
        if (next == list.end() || next->due > now) break;
        const Value value = *next;
        list.erase(next);
        present[row] = shown[row] = value.power;
        for (const Value& other : list) {
          if (other.sent > value.sent) shown[row] = other.power;
        }
      }
    }
  }

  std::vector<int> present = std::vector<int>(Nodes, 100);
  std::vector<int> shown = std::vector<int>(Nodes, 100);

 private:
  std::array<std::vector<Value>, Nodes> waiting_;
  int count_ = 0;
};

TEST(WaitingRows, AgreeWithTheRuleWhateverIsWrittenAndHoweverTheClockJumps) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    ControllerRig rig;
    const std::vector<std::string> ids = rig.nodeIds();
    const Moment start = rig.clock.now();
    // The streets' programs begin with other powers than the rows.
    ASSERT_EQ(rig.write(allRows("20250301000000W", ids, {100, 100, 100})), 200);
    Model model;
    for (int step = 0; step < 40; ++step) {
      const seconds now = rig.clock.now() - start;
      if (upTo(2) == 0) {
        const seconds by = std::chrono::minutes{upTo(300) - 60};
        rig.clock.jump(by);
        rig.controller.advance();
        model.advance(now + by);
      } else {
        std::vector<int> powers = model.shown;
        for (int& power : powers) {
          if (upTo(2) == 0) power = upTo(5) * 10;
        }
        const seconds due = now + std::chrono::minutes{upTo(400) - 100};
        const std::string date = formatDigits(toCivil(start + due, ZoneRule{60, false})) + "W";
        ASSERT_EQ(rig.write(allRows(date, ids, powers)), 200) << rig.refusal;
        model.write(powers, due, now);
      }
      ASSERT_EQ(shown(rig), model.shown) << step;
      for (std::size_t row = 0; row < ids.size(); ++row)
        ASSERT_EQ(inForce(rig, ids[row]), model.present[row]) << step << ", row " << row;
      if (upTo(9) == 0) {
        ControllerRig again;
        ASSERT_EQ(again.controller.loadState(rig.state()), "");
        ASSERT_EQ(again.state(), rig.state());
      }
    }
  }
}

}  // namespace
}  // namespace lamp::controller::test
