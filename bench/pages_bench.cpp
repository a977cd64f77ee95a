// Every list page as a user runs through it, without a window: open, select all, type, OK; beside
// the XML model doing the page's work on the same document. Names read
// "page/<page>/<variant>/<nodes>". With
// --once PAGE NODES it runs a page once and prints how much memory that took.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "bench/documents.h"
#include "bench/headless.h"
#include "bench/peak_memory.h"
#include "bench/sizes.h"
#include "bench/work.h"
#include "host/services/drivers.h"
#include "pages/alarm_thresholds_page.h"
#include "pages/blacklist_page.h"
#include "pages/node_command_page.h"
#include "pages/node_power_page.h"
#include "pages/node_removal_page.h"
#include "pages/node_table_page.h"
#include "programs/group_schedules_page.h"

namespace {

using bench::click;
using bench::selectAll;
using bench::type;

XCDriverDeviceZelLampManager& driver() {
  static XCDriverDeviceZelLampManager made{XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"),
                                           XCBasicString(u"Main street"), XCBasicString(u"")};
  return made;
}

template <class Page, class... Arguments>
void open(Arguments... arguments) {
  Page(&driver(), nullptr, arguments...).DoModal();
}

struct PageCase {
  const char* name;
  std::string (*reply)(std::size_t nodes);
  const char* section;
  const char* attribute;  // what the page's work sets on every node
  const char* text;       // and to what
  void (*open)();
  void (*user)(XCBaseDlg&);
};

constexpr PageCase Pages[] = {
    {"nodeTable", bench::nodeTable, "L04", "Reference", "Lamp", open<CDlgE04CfgZelLampManager>,
     [](XCBaseDlg& page) {
       selectAll(page, "nodes");
       type(page, "reference", u"Lamp");
       click(page, "ok");
     }},
    {"nodePower", bench::nodePower, "L05", "power", "55", open<CDlgE05CfgZelLampManager>,
     [](XCBaseDlg& page) {
       selectAll(page, "nodes");
       type(page, "power", u"55");
       click(page, "ok");
     }},
    {"alarmThresholds", bench::alarmThresholds, "L07", "blinkTime", "12",
     open<CDlgE07CfgZelLampManager>,
     [](XCBaseDlg& page) {
       selectAll(page, "oldNodes");
       selectAll(page, "newNodes");
       type(page, "blinkTime", u"12");
       type(page, "newBlinkTime", u"12");
       click(page, "ok");
     }},
    {"nodeRemoval", bench::nodeTable, "L04", "Reference", "Lamp", open<CDlgE08CfgZelLampManager>,
     [](XCBaseDlg& page) {
       selectAll(page, "nodes");
       click(page, "remove");
       click(page, "ok");
     }},
    {"blacklist", bench::nodeTable, "L04", "Reference", "Lamp", open<CDlgE09CfgZelLampManager>,
     [](XCBaseDlg& page) {
       selectAll(page, "nodes");
       click(page, "moveRight");
       click(page, "ok");
     }},
    {"nodeSelection", bench::nodeTable, "L04", "Reference", "Lamp", open<CDlgE11CfgZelLampManager>,
     [](XCBaseDlg& page) {
       selectAll(page, "nodes");
       click(page, "ok");
     }},
    {"groupSchedules", bench::intervalPrograms, "L06", "power1", "55",
     [] { open<CDlgE06CfgZelLampManager>(lamp::ProgramKind::interval); },
     [](XCBaseDlg& page) {
       selectAll(page, "nodes");
       type(page, "power1", u"55");
       click(page, "ok");
     }},
};

bench::Task taskOf(const PageCase& page, std::size_t nodes) {
  return {page.reply(nodes), page.section, page.attribute,
          std::vector<std::string>(nodes, page.text)};
}

std::size_t runThrough(bench::Headless& headless, const PageCase& page) {
  headless.forget();
  headless.atDialogs(page.user);
  page.open();
  return headless.written();
}

void runPage(benchmark::State& state, bench::Headless& headless, const PageCase& page) {
  headless.answer(page.reply(static_cast<std::size_t>(state.range(0))));
  std::size_t sent = 0;
  for (auto _ : state) sent = runThrough(headless, page);
  if (sent == 0) state.SkipWithError("the page sent nothing");
}

void runWork(benchmark::State& state, const PageCase& page) {
  const auto work = bench::hostWork(taskOf(page, static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(work->whole());
}

int once(bench::Headless& headless, const std::string& name, std::size_t nodes) {
  for (const PageCase& page : Pages) {
    if (name != page.name) continue;
    headless.answer(page.reply(nodes));
    const bench::PeakMemory before;
    if (runThrough(headless, page) == 0) return 3;
    std::printf("%zu\n", before.growth());
    return 0;
  }
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  bench::Headless headless;
  if (argc == 4 && std::string(argv[1]) == "--once")
    return once(headless, argv[2], std::strtoul(argv[3], nullptr, 10));
  for (const PageCase& page : Pages) {
    const std::string name = std::string("page/") + page.name;
    auto* whole = benchmark::RegisterBenchmark(
        (name + "/page").c_str(), [&](benchmark::State& state) { runPage(state, headless, page); });
    auto* work = benchmark::RegisterBenchmark(
        (name + "/xml").c_str(), [&](benchmark::State& state) { runWork(state, page); });
    for (const long nodes : bench::Sizes) {
      whole->Arg(nodes);
      work->Arg(nodes);
    }
    whole->Arg(bench::FarTooMany);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
