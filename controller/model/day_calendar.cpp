#include "controller/model/day_calendar.h"

#include <pugixml.hpp>

#include "controller/model/names.h"
#include "controller/xml/document_reader.h"

namespace lamp::controller {
namespace {

using namespace std::chrono;

constexpr std::size_t kDepth = 16;
constexpr const char* kRoot = "calendar";
constexpr const char* kDays = "days";
constexpr const char* kDay = "day";
constexpr const char* kNumber = "num";
constexpr const char* kYear = "year";
constexpr const char* kHasModule = "hasIOmodule";

// Days before each month where February has 29.
constexpr std::array<std::size_t, 12> kBefore = {0,   31,  60,  91,  121, 152,
                                                 182, 213, 244, 274, 305, 335};

bool saysNothing(pugi::xml_node row) {
  for (const pugi::xml_attribute attribute : row.attributes()) {
    if (attribute.as_int() != 0) return false;
  }
  return true;
}

}  // namespace

std::string DayCalendar::load(std::string_view text) {
  pugi::xml_document document;
  if (const auto fault = readXml(std::string(text), kDepth, document)) return fault->message();
  const pugi::xml_node root = document.child(kRoot);
  if (!root) return std::string("its root is not <") + kRoot + ">";
  byClock_ = std::string_view(root.child_value(kHasModule)) == "T";
  year_ = root.child_value(kYear);
  year_.resize(kSlots, '0');
  programs_ = {};
  for (const pugi::xml_node day : root.child(kDays).children(kDay)) {
    const std::string_view number = day.child_value(kNumber);
    if (number.size() != 1 || number[0] < '0' || number[0] > '9') continue;
    const pugi::xml_node row = day.child(names::kInterval);
    if (saysNothing(row)) continue;
    programs_[static_cast<std::size_t>(number[0] - '0')] =
        DayProgram{IntervalProgram::read(row), ClockProgram::read(row)};
  }
  return "";
}

int DayCalendar::typeOf(local_days date) const {
  const year_month_day day{date};
  const std::size_t slot =
      kBefore[unsigned(day.month()) - 1] + static_cast<std::size_t>(unsigned(day.day())) - 1;
  const char type = slot < year_.size() ? year_[slot] : '0';
  return type >= '0' && type <= '9' ? type - '0' : 0;
}

const DayProgram* DayCalendar::programFor(local_days date, bool byClock) const {
  const auto& program = programs_[static_cast<std::size_t>(typeOf(date))];
  return program && byClock == byClock_ ? &*program : nullptr;
}

}  // namespace lamp::controller
