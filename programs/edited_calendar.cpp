#include "programs/edited_calendar.h"

#include <utility>

#include "programs/calendar_names.h"
#include "programs/calendar_store.h"
#include "programs/calendar_table.h"
#include "programs/day_types.h"

namespace lamp {

EditedCalendar::EditedCalendar(const host::PageDescription& table, ProgramKind kind,
                               XCCalendar& view, Node* device)
    : table_(table),
      kind_(kind),
      device_(device),
      span_(calendarSpan(XCDateTime::LTC())),
      year_(view, span_),
      document_(kind) {
  if (device_ != nullptr && device_->Node(calendar::Calendar.text()) != nullptr)
    openingName_ = device_->Value(calendar::Calendar);
  name_ = openingName_.value_or(XCBasicString());
}

void EditedCalendar::initialise() {
  year_.initialise();
  year_.apply({});
}

void EditedCalendar::begin() {
  completeDays(document_.root().NewChild(calendar::Days), kind_);
  settle();
}

// Only what is painted or edited from here on is a change.
void EditedCalendar::settle() {
  document_.setYear(year_.year());
  document_.settle();
  before_ = describedCalendar(document_.untouched(), openingName_, span_);
}

bool EditedCalendar::load(const XCBasicString& name,
                          const std::optional<std::filesystem::path>& file) {
  if (!document_.load(file)) return false;
  year_.apply(document_.year());
  settle();
  name_ = name;
  return true;
}

// All that can run out of memory is done before the file is written.
bool EditedCalendar::save(const CalendarTarget& target) {
  document_.setYear(year_.year());
  XmlDocument saved = describedCalendar(document_.root(), openingName_, span_);
  XCBasicString name = target.name;
  if (!document_.save(target.file, target.name)) return false;
  before_ = std::move(saved);
  name_ = std::move(name);
  return true;
}

bool EditedCalendar::changed() {
  document_.setYear(year_.year());
  return document_.changed();
}

bool EditedCalendar::isAnother() const {
  return !(name_ == openingName_.value_or(XCBasicString()));
}

void EditedCalendar::assign() {
  if (device_ != nullptr) device_->SetValue(calendar::Calendar, name_);
}

const EditedCalendar::Node* EditedCalendar::Edited() {
  document_.setYear(year_.year());
  now_ = describedCalendar(document_.root(), isAnother() ? name_ : openingName_, span_);
  return now_.Root();
}

}  // namespace lamp
