// The controller on arbitrary commands, in any order, with time going by, and killed in between:
// the state stays one that reads, refused commands change nothing, and a controller that starts
// again has the state of the one before.

#include <algorithm>
#include <optional>
#include <pugixml.hpp>
#include <sstream>

#include "controller/http/command_server.h"
#include "controller/http/control_desk.h"
#include "controller/http/live_news.h"
#include "controller/model/controller.h"
#include "controller/model/street_generator.h"
#include "controller/storage/state_keeper.h"
#include "controller/xml/document_reader.h"
#include "fuzz/fault.h"
#include "fuzz/input.h"
#include "tests/controller/support/memory_disk.h"

namespace {

using namespace lamp::controller;
using fuzz::expect;
using test::MemoryDisk;

constexpr std::size_t MostSteps = 24;
constexpr const char* DataFolder = "/data";
constexpr const char* StateFile = "/data/state.xml";

class StandingTime : public TimeSource {
 public:
  Point now() const override { return now_; }
  void pass(std::chrono::seconds by) { now_ += by; }

 private:
  Point now_ = std::chrono::sys_days{std::chrono::year{2025} / std::chrono::March / 15} +
               std::chrono::hours{11};
};

/// A controller whose state is kept on a disk in memory, from its start until it is killed.
struct Life {
  Life(const TimeSource& time, MemoryDisk& disk)
      : clock(time), controller("LM-TEST", clock), keeper(controller, StateFile, disk) {
    controller.setDataFolder(DataFolder, disk);
    bool found = false;
    std::string wrong = keeper.restore(found);
    if (!wrong.empty()) fuzz::fault("the state that was kept is refused: " + wrong);
    if (!found) controller.buildStreet(StreetPlan{3, 7, true});
    wrong = keeper.begin();
    if (!wrong.empty()) fuzz::fault("the state can't be kept: " + wrong);
    controller.tidyDataFolder();
  }

  std::string state() const {
    std::string text;
    controller.printState(text);
    return text;
  }

  ControllerClock clock;
  Controller controller;
  StateKeeper keeper;
};

/// What an input makes of one controller.
class Story {
 public:
  Story() { life_.emplace(time_, disk_); }

  /// A step is a letter and what belongs to it.
  void step(const std::string& step);
  void check();

 private:
  void perform(int command, const std::string& body);
  void order(const std::string& address);
  void passTime(const std::string& seconds);
  void restart();

  StandingTime time_;
  MemoryDisk disk_;
  std::optional<Life> life_;
};

void expectXml(const std::string& text, const char* what) {
  pugi::xml_document document;
  expect(!readXml(text, MostDepth + 1, document), what);
}

void Story::perform(int command, const std::string& body) {
  life_->controller.advance();
  const std::string before = life_->state();
  const Reply reply = life_->controller.perform(command, body);
  if (reply.status != 200) {
    expect(!reply.body.empty(), "a refusal says why");
    expect(life_->state() == before, "a refused command changes nothing");
  } else if (!reply.body.empty()) {
    expectXml(reply.body, "an answer is XML");
  }
  expect(reply.status == 200 || (reply.status >= 400 && reply.status < 500),
         "a command is answered or refused");
  for (const std::string& text : {body, reply.body}) ShownText(text).str();
}

// "clock?speed=2&paused=1", as behind "/control/".
void Story::order(const std::string& address) {
  const std::size_t query = std::min(address.find('?'), address.size());
  HttpHead head;
  std::istringstream parameters(address.substr(std::min(query + 1, address.size())));
  for (std::string each; std::getline(parameters, each, '&');) {
    const std::size_t equals = std::min(each.find('='), each.size());
    head.parameters.emplace(each.substr(0, equals), each.substr(std::min(equals + 1, each.size())));
  }
  FaultPlan faults;
  CommandLog log;
  const Service service{life_->controller, life_->clock, faults, log, "token", [] {}};
  ControlDesk(service).carryOut(address.substr(0, query), head);
  LiveNews(service).next(true);
  faults.take(2, true);
}

// Up to about 68 years at once; a controller is asked now and then meanwhile.
void Story::passTime(const std::string& seconds) {
  const long by = std::strtol(seconds.c_str(), nullptr, 10);
  time_.pass(std::chrono::seconds{std::clamp(by, 0L, 0x7FFFFFFFL)});
  life_->controller.advance();
  life_->controller.takeFault();
  life_->controller.keepUsage();
}

// How far the clock is ahead is left out: the simulation's orders for it are kept with the next
// tick and only while it runs at its own speed.
std::string withoutClock(std::string state) {
  constexpr std::string_view Name = " clockOffset=\"";
  const std::size_t from = state.find(Name);
  expect(from != std::string::npos, "a state tells its clock");
  return state.erase(from, state.find('"', from + Name.size()) + 1 - from);
}

void Story::restart() {
  const std::string before = withoutClock(life_->state());
  life_.reset();
  life_.emplace(time_, disk_);
  expect(withoutClock(life_->state()) == before,
         "a controller that starts again has the state of the one before");
}

void Story::step(const std::string& step) {
  if (step.empty()) return;
  const std::string body = step.substr(1);
  switch (step.front()) {
    case 'r':
      return perform(1, body);
    case 'w':
      return perform(2, body);
    case 'e':  // as a client that knows the frame sends it
      return perform(2, "<deviceCfg>" + body + "</deviceCfg>");
    case 'c':
      return perform(9, body);
    case 'i':
      return perform(29, body);
    case 'a':
      return perform(30, body);
    case 'f':
      return perform(52, body);
    case 'n':
      return perform(58, body);
    case 't':
      return passTime(body);
    case 'd':
      return order(body);
    case 'k':
      life_->keeper.compact();
      return;
    default:
      restart();
  }
}

void Story::check() {
  for (const char* code : {"L01", "L02", "L03", "L04", "L05", "L06", "L07", "L08", "L09", "L11",
                           "L13", "L15", "L17"}) {
    const Reply reply =
        life_->controller.perform(1, "<deviceCfg><" + std::string(code) + "/></deviceCfg>");
    expect(reply.status == 200, "every section can be read");
    expectXml(reply.body, "every section reads as XML");
  }
  life_->controller.view();
  life_->controller.planView();
  restart();
  for (const auto& [path, content] : disk_.files())
    if (!path.starts_with("/data/") || path.find("/../") != std::string::npos)
      fuzz::fault("a file outside of the folder: " + path);
}

// A controller that someone gives another's state, or a damaged one.
void loadAnything(const std::string& text) {
  const StandingTime time;
  ControllerClock clock(time);
  Controller controller("LM-TEST", clock);
  if (!controller.loadState(text).empty()) return;
  std::string printed;
  controller.printState(printed);
  Controller again("LM-TEST", clock);
  const std::string wrong = again.loadState(printed);
  if (!wrong.empty()) fuzz::fault("a state that was printed is refused: " + wrong);
  controller.advance();
  controller.view();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  if (size > 0 && data[0] == 'S') {
    input.byte();
    loadAnything(input.document());
    return 0;
  }
  Story story;
  for (std::size_t steps = 0; steps < MostSteps && !input.empty(); ++steps)
    story.step(input.document());
  story.check();
  return 0;
}
