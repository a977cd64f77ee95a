// The steps that touch every row once, or should: the child devices of a node update, half of the
// nodes to the blacklist, a group of a tenth of the lamps, sorting by each column. Names read
// "step/<step>/host/<nodes>".

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <unordered_map>

#include "bench/documents.h"
#include "bench/headless.h"
#include "bench/sizes.h"
#include "device/child_devices.h"
#include "host/services/drivers.h"
#include "host/services/setup.h"
#include "pages/blacklist_page.h"
#include "pages/node_table_page.h"
#include "programs/group_schedules_page.h"

namespace {

using bench::click;
using benchmark::State;

XCDriverDeviceZelLampManager& driver() {
  static XCDriverDeviceZelLampManager made{XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"),
                                           XCBasicString(u"Main street"), XCBasicString(u"")};
  return made;
}

std::size_t nodesOf(const State& state) {
  return static_cast<std::size_t>(state.range(0));
}

XCBasicString deviceId(std::size_t index) {
  return XCBasicString::FromUtf8("{L" + std::to_string(index) + "}");
}

/// Opens a page over a reply and runs the benchmark's loop at the open dialog.
template <class Page, class... Arguments>
void atPage(bench::Headless& headless, std::string reply,
            const std::function<void(XCBaseDlg&)>& loop, Arguments... arguments) {
  headless.answer(std::move(reply));
  headless.atDialogs(loop);
  Page(&driver(), nullptr, arguments...).DoModal();
}

// The node list against as many child devices that are known already.
void childDevices(State& state, bench::Headless&) {
  XmlDocument nodes;
  nodes.Parse(bench::nodeList(nodesOf(state)));
  XmlDocument before("device");
  XmlDocument configuration("configuration");
  lamp::rebuildChildDevices(nodes, *before.Root(), u"Main street", configuration.Root());
  for (auto _ : state) {
    state.PauseTiming();
    auto device = std::make_unique<XmlDocument>("device");
    auto group = std::make_unique<XmlDocument>("configuration");
    *device->Root() = *before.Root();
    *group->Root() = *configuration.Root();
    state.ResumeTiming();
    if (!lamp::rebuildChildDevices(nodes, *device->Root(), u"Main street", group->Root()))
      state.SkipWithError("the child devices were not rebuilt");
    state.PauseTiming();
    device.reset();
    group.reset();
    state.ResumeTiming();
  }
}

// Half of the nodes to the right and OK, which compares the lists.
void blacklist(State& state, bench::Headless& headless) {
  headless.answer(bench::nodeTable(nodesOf(state)));
  headless.atDialogs([&](XCBaseDlg& page) {
    bench::select(page, "nodes", bench::firstRows(nodesOf(state) / 2));
    click(page, "moveRight");
    click(page, "ok");
  });
  headless.forget();
  for (auto _ : state) CDlgE09CfgZelLampManager(&driver(), nullptr).DoModal();
  if (headless.written() == 0) state.SkipWithError("the page sent nothing");
}

/// A lamp a node in the registry, and a group with every tenth of them.
class Street : public host::DriverRegistry {
 public:
  explicit Street(std::size_t lamps) {
    XmlDocument& configuration = XCMainCfg::Get().Document();
    auto& group = configuration.Create("configuration")
                      .NewChild("deviceGroups")
                      .NewChild("groups")
                      .NewChild("group");
    group.SetValue("id", u"Main street");
    auto& inner = group.NewChild("groups").NewChild("group");
    inner.SetValue("id", u"Tenth");
    auto& devices = inner.NewChild("devices");
    for (std::size_t i = 0; i < lamps; ++i) {
      drivers_[deviceId(i).str()] = std::make_unique<XCDriver>(
          XCBasicString(u"ZELLAMP"), XCBasicString::FromUtf8(bench::nodeId(i)), XCBasicString(u"L"),
          XCBasicString());
      if (i % 10 == 0) devices.NewChild("device").SetValue("id", deviceId(i));
    }
    host::setDriverRegistry(this);
  }
  Street(const Street&) = delete;
  Street& operator=(const Street&) = delete;
  ~Street() override {
    host::setDriverRegistry(nullptr);
    XCMainCfg::Get().Document().Clear();
  }
  XCDriver* find(std::u16string_view id) override {
    const auto found = drivers_.find(std::u16string(id));
    return found == drivers_.end() ? nullptr : found->second.get();
  }

 private:
  std::unordered_map<std::u16string, std::unique_ptr<XCDriver>> drivers_;
};

// A tenth of the lamps by their group; @p edited as after a change of the rows, when the index of
// the rows is made anew.
void groupOfATenth(State& state, bench::Headless& headless, bool edited) {
  const Street street(nodesOf(state));
  atPage<CDlgE06CfgZelLampManager>(
      headless, bench::intervalPrograms(nodesOf(state)),
      [&](XCBaseDlg& page) {
        bench::select(page, "groups", {0});
        bench::select(page, "groups", {});
        for (auto _ : state) {
          if (edited) {
            state.PauseTiming();
            bench::listOf(page, "nodes").cellsChanged();
            state.ResumeTiming();
          }
          bench::select(page, "groups", {0});
          if (bench::listOf(page, "nodes").selection().size() != (nodesOf(state) + 9) / 10)
            state.SkipWithError("the group's lamps are not selected");
          state.PauseTiming();
          bench::select(page, "groups", {});
          state.ResumeTiming();
        }
      },
      lamp::ProgramKind::interval);
}

// A column the first time, hence not sorted by it yet, over rows in the order of the first column.
void sortBy(State& state, bench::Headless& headless, std::size_t column) {
  atPage<CDlgE04CfgZelLampManager>(headless, bench::nodeTable(nodesOf(state)),
                                   [&](XCBaseDlg& page) {
                                     for (auto _ : state) bench::sort(page, "nodes", column);
                                   });
}

void sortProgramsBy(State& state, bench::Headless& headless, std::size_t column) {
  atPage<CDlgE06CfgZelLampManager>(
      headless, bench::intervalPrograms(nodesOf(state)),
      [&](XCBaseDlg& page) {
        for (auto _ : state) bench::sort(page, "nodes", column);
      },
      lamp::ProgramKind::interval);
}

void add(const std::string& name, const std::function<void(State&)>& run,
         long last = bench::FarTooMany) {
  auto* registered = benchmark::RegisterBenchmark(("step/" + name + "/host").c_str(), run);
  for (const long nodes : bench::Sizes) registered->Arg(nodes);
  if (last > 100000) registered->Arg(last);
}

}  // namespace

int main(int argc, char** argv) {
  bench::Headless headless;
  add("childDevices", [&](State& state) { childDevices(state, headless); });
  add("blacklistHalf", [&](State& state) { blacklist(state, headless); });
  add("groupOfATenth", [&](State& state) { groupOfATenth(state, headless, false); });
  add("groupAfterEdit", [&](State& state) { groupOfATenth(state, headless, true); });
  for (std::size_t column = 0; column < 4; ++column)
    add("sortNodesBy" + std::to_string(column),
        [&headless, column](State& state) { sortBy(state, headless, column); });
  for (std::size_t column = 0; column < 9; ++column)
    add(
        "sortProgramsBy" + std::to_string(column),
        [&headless, column](State& state) { sortProgramsBy(state, headless, column); }, 0);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
