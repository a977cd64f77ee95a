#include "bench/ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    const std::string& name = run.run_name.function_name;
    const std::size_t slash = name.find('/');
    const std::string step = name.substr(0, slash);
    const double seconds = run.cpu_accumulated_time / double(run.iterations);
    Times& times = times_[{step, std::stol(run.run_name.args)}];
    double& best = name.substr(slash + 1) == "host" ? times.host : times.bare;
    best = best == 0 ? seconds : std::min(best, seconds);
    if (std::find(steps_.begin(), steps_.end(), step) == steps_.end()) steps_.push_back(step);
  }
}

const RatioReporter::Times* RatioReporter::find(const std::string& step, long nodes) const {
  const auto found = times_.find({step, nodes});
  return found == times_.end() ? nullptr : &found->second;
}

double RatioReporter::ratio(const std::string& step, long nodes) const {
  const Times* times = find(step, nodes);
  return times && times->bare > 0 ? times->host / times->bare : 0;
}

double RatioReporter::growth(const std::string& step, long fewer, long nodes) const {
  const Times* before = find(step, fewer);
  const Times* after = find(step, nodes);
  if (!before || !after || before->host <= 0) return 0;
  return after->host / before->host * double(fewer) / double(nodes);
}

void RatioReporter::Finalize() {
  std::printf("%-10s %8s %12s %12s %7s %12s\n", "step", "nodes", "bare us", "host us", "ratio",
              "growth/node");
  for (const std::string& step : steps_) {
    long before = 0;
    for (const auto& [key, times] : times_) {
      if (key.first != step) continue;
      std::printf("%-10s %8ld %12.1f %12.1f %7.2f", step.c_str(), key.second, times.bare * 1e6,
                  times.host * 1e6, ratio(step, key.second));
      if (before > 0) std::printf(" %12.2f", growth(step, before, key.second));
      std::printf("\n");
      before = key.second;
    }
  }
}

}  // namespace bench
