#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

/// Collects runs named "step/bare/nodes" and "step/host/nodes", and tells how they compare: the
/// ratio of the fastest runs, and how the time grows from one size to the next.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;
  /// Prints the table.
  void Finalize() override;

  /// The ratio host to bare of a step at a size; 0 when it was not measured.
  double ratio(const std::string& step, long nodes) const;
  /// The time a node of the host's step at @p nodes over that at @p fewer nodes; 0 when not
  /// measured. 1 is linear growth.
  double growth(const std::string& step, long fewer, long nodes) const;

 private:
  struct Times {
    double bare = 0;  // seconds, of the fastest run
    double host = 0;
  };
  const Times* find(const std::string& step, long nodes) const;

  std::vector<std::string> steps_;  // in the order in which they were measured
  std::map<std::pair<std::string, long>, Times> times_;
};

}  // namespace bench
