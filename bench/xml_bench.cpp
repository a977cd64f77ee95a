// The XML model against the bare XML library doing the same work. Prints the ratios; ends with
// status 1 when the whole work is above the limit or grows faster than the nodes.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "bench/ratio_reporter.h"
#include "bench/work.h"

namespace {

constexpr long Sizes[] = {1000, 10000, 100000};
constexpr double MostRatio = 0.85;
// Memory that no longer fits the caches costs both sides; twice the time a node is no longer that.
constexpr double MostGrowth = 2.0;

using Step = std::function<void(bench::Work&)>;

const std::pair<const char*, Step> Steps[] = {
    {"parse", [](bench::Work& work) { work.parse(); }},
    {"copy", [](bench::Work& work) { work.copy(); }},
    {"change", [](bench::Work& work) { work.change(); }},
    {"compare", [](bench::Work& work) { benchmark::DoNotOptimize(work.compare()); }},
    {"section", [](bench::Work& work) { work.section(); }},
    {"write", [](bench::Work& work) { benchmark::DoNotOptimize(work.write()); }},
    {"whole", [](bench::Work& work) { benchmark::DoNotOptimize(work.whole()); }},
};

void run(benchmark::State& state, bool host, const Step& step) {
  const auto nodes = static_cast<std::size_t>(state.range(0));
  const std::unique_ptr<bench::Work> work = host ? bench::hostWork(nodes) : bench::bareWork(nodes);
  work->whole();  // every step finds what it works on
  for (auto _ : state) step(*work);
}

bool withinLimits(const bench::RatioReporter& reporter) {
  bool good = true;
  for (const long nodes : Sizes) {
    const double ratio = reporter.ratio("whole", nodes);
    if (ratio <= MostRatio) continue;
    std::printf("FAULT: the whole work at %ld nodes is %.2f of the bare library, over %.2f\n",
                nodes, ratio, MostRatio);
    good = false;
  }
  for (std::size_t i = 1; i < std::size(Sizes); ++i) {
    const double growth = reporter.growth("whole", Sizes[i - 1], Sizes[i]);
    if (growth <= MostGrowth) continue;
    std::printf("FAULT: from %ld to %ld nodes the time a node grows %.2f times, over %.2f\n",
                Sizes[i - 1], Sizes[i], growth, MostGrowth);
    good = false;
  }
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  for (const auto& [name, step] : Steps)
    for (const bool host : {false, true}) {
      const std::string full = std::string(name) + (host ? "/host" : "/bare");
      auto* registered = benchmark::RegisterBenchmark(
          full.c_str(), [host, &step = step](benchmark::State& state) { run(state, host, step); });
      for (const long nodes : Sizes) registered->Arg(nodes);
    }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return withinLimits(reporter) ? 0 : 1;
}
