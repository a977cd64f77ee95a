// The XML model against the bare XML library doing the same work. Names read
// "xml/<step>/<variant>/<nodes>"; report.py makes the ratios. With --once VARIANT NODES it does the
// work once and prints how much memory that took.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "bench/peak_memory.h"
#include "bench/sizes.h"
#include "bench/work.h"

namespace {

using Make = std::unique_ptr<bench::Work> (*)(bench::Task);

struct Variant {
  const char* name;
  Make make;
};

constexpr Variant Variants[] = {
    {"shared", bench::sharedWork}, {"header", bench::headerWork}, {"host", bench::hostWork}};

using Step = std::function<void(bench::Work&)>;

const std::pair<const char*, Step> Steps[] = {
    {"parse", [](bench::Work& work) { work.parse(); }},
    {"copy", [](bench::Work& work) { work.copy(); }},
    {"change", [](bench::Work& work) { work.change(); }},
    {"check", [](bench::Work& work) { benchmark::DoNotOptimize(work.check()); }},
    {"compare", [](bench::Work& work) { benchmark::DoNotOptimize(work.compare()); }},
    {"section", [](bench::Work& work) { work.section(); }},
    {"write", [](bench::Work& work) { benchmark::DoNotOptimize(work.write()); }},
    {"whole", [](bench::Work& work) { benchmark::DoNotOptimize(work.whole()); }},
};

void run(benchmark::State& state, Make make, const Step& step) {
  const auto work = make(bench::nodeTableTask(static_cast<std::size_t>(state.range(0))));
  work->whole();  // every step finds what it works on
  for (auto _ : state) step(*work);
}

int once(const std::string& variant, std::size_t nodes) {
  for (const Variant& one : Variants) {
    if (variant != one.name) continue;
    auto work = one.make(bench::nodeTableTask(nodes));
    if (!work) return 3;
    const bench::PeakMemory before;
    work->whole();
    std::printf("%zu\n", before.growth());
    return 0;
  }
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "--once")
    return once(argv[2], std::strtoul(argv[3], nullptr, 10));
  for (const auto& [name, step] : Steps)
    for (const Variant& variant : Variants) {
      if (!variant.make(bench::nodeTableTask(1))) continue;
      const std::string full = std::string("xml/") + name + "/" + variant.name;
      auto* registered = benchmark::RegisterBenchmark(
          full.c_str(),
          [make = variant.make, &step = step](benchmark::State& state) { run(state, make, step); });
      for (const long nodes : bench::Sizes) registered->Arg(nodes);
    }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
