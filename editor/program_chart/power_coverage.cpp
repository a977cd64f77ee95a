#include "editor/program_chart/power_coverage.h"

#include <algorithm>

namespace editor {

void PowerCoverage::add(int from, int to, int power) {
  from = std::max(from, 0);
  to = std::min(to, minutes_);
  if (from >= to) return;
  std::vector<int>& changes = changes_[static_cast<std::size_t>(power)];
  if (changes.empty()) changes.resize(static_cast<std::size_t>(minutes_) + 1);
  ++changes[static_cast<std::size_t>(from)];
  --changes[static_cast<std::size_t>(to)];
}

std::vector<NightSpan> PowerCoverage::spans() const {
  std::vector<std::optional<ValueRange>> powers(static_cast<std::size_t>(minutes_));
  for (std::size_t power = 0; power < Powers; ++power) {
    int rows = 0;
    for (std::size_t minute = 0; minute < powers.size() && !changes_[power].empty(); ++minute) {
      rows += changes_[power][minute];
      if (rows == 0) continue;
      const int value = static_cast<int>(power);
      if (powers[minute])
        powers[minute]->include(value);
      else
        powers[minute] = ValueRange{value, value};
    }
  }
  std::vector<NightSpan> spans;
  for (std::size_t minute = 0; minute < powers.size(); ++minute) {
    const int at = static_cast<int>(minute);
    if (!spans.empty() && spans.back().power == powers[minute])
      spans.back().to = at + 1;
    else
      spans.push_back({at, at + 1, powers[minute]});
  }
  return spans;
}

}  // namespace editor
