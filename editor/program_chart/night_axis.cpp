#include "editor/program_chart/night_axis.h"

#include <algorithm>
#include <array>

namespace editor {
namespace {

constexpr int Hour = 60;
constexpr int FullPower = 100;
constexpr std::array<int, 7> HourSteps = {1, 2, 3, 4, 6, 12, 24};

}  // namespace

int NightAxis::x(int minute) const {
  return area_.left() + minute * (area_.width() - 1) / minutes_;
}

int NightAxis::y(int power) const {
  return area_.bottom() - power * (area_.height() - 1) / FullPower;
}

int NightAxis::minuteAt(int x) const {
  const int width = std::max(area_.width() - 1, 1);
  return std::clamp((x - area_.left()) * minutes_ / width, 0, minutes_ - 1);
}

int NightAxis::hoursBetweenLines(int room) const {
  const auto fits = [&](int hours) {
    return hours * Hour * (area_.width() - 1) / minutes_ >= room;
  };
  const auto found = std::find_if(HourSteps.begin(), HourSteps.end(), fits);
  return found == HourSteps.end() ? HourSteps.back() : *found;
}

}  // namespace editor
