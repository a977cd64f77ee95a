#pragma once

#include <atomic>
#include <string>

#include "controller/http/command_server.h"
#include "controller/storage/state_keeper.h"
#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {

/// A controller rig behind a real web service on a free port of this machine.
struct ServerRig {
  explicit ServerRig(StreetPlan plan = StreetPlan{20, 7, true},
                     const std::filesystem::path& state = {}, Disk& disk = machineDisk())
      : rig(plan), keeper(rig.controller, state, disk) {
    bool found = false;
    keeper.restore(found);
    keeper.begin();
    started = server.start("127.0.0.1", 0);
    base = "http://127.0.0.1:" + std::to_string(server.port());
  }

  /// Puts a fault on order.
  void order(const std::string& text) {
    Fault fault;
    if (parseFault(text, fault).empty()) faults.add(fault);
  }

  ControllerRig rig;
  StateKeeper keeper;
  FaultPlan faults;
  CommandLog log;
  std::atomic<int> restarts = 0;
  CommandServer server{
      Service{rig.controller, rig.clock, faults, log, "test-token", [this] { ++restarts; }}};
  bool started = false;
  std::string base;
};

}  // namespace lamp::controller::test
