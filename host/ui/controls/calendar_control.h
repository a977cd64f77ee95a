#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/time/date_time.h"
#include "host/ui/colour.h"
#include "host/ui/control.h"

/// The year view: the twelve months of one year at a time, each day painted with a day type.
/// Dates are whole days; times of day are ignored.
class HOST_API XCCalendar : public host::Control {
 public:
  struct DayType {
    XCBasicString id;
    host::Colour colour;
    XCBasicString name;
  };

  using host::Control::Control;

  /// Month 0 is January.
  void SetMonthName(int month, std::u16string_view name);
  /// Weekday 0 is Monday.
  void SetWeekdayName(int weekday, std::u16string_view name);
  const XCBasicString& MonthName(int month) const { return monthNames_[std::size_t(month)]; }
  const XCBasicString& WeekdayName(int weekday) const {
    return weekdayNames_[std::size_t(weekday)];
  }

  /// The years that can be shown. The view shows the first one until another is chosen.
  void SetMinYear(int year);
  void SetMaxYear(int year);
  int MinYear() const { return minYear_; }
  int MaxYear() const { return maxYear_; }
  int ShownYear() const { return shownYear_; }
  /// Held within the years that can be shown.
  void ShowYear(int year);

  /// Takes the days from @p first to @p last, both included, out of use: they can't be painted.
  void Disable(const XCDateTime& first, const XCDateTime& last);
  void EnableAll();
  bool IsEnabledDay(const XCDateTime& date) const;
  /// The first and the last day of the years shown that can be painted; none when there is none.
  std::optional<XCDateTime> FirstEnabledDay() const;
  std::optional<XCDateTime> LastEnabledDay() const;

  /// What the user paints from now on.
  void SetSelType(host::Colour colour, std::u16string_view id, std::u16string_view name = {});
  const DayType& SelType() const { return selType_; }
  /// When on, painting a day that already has the type leaves it; when off, it clears the day.
  void SetDisableUnselect(bool on) { disableUnselect_ = on; }

  /// Paints one day, by the program. Days out of use take it too.
  void SelectDay(const XCDateTime& date, const DayType& type);
  void ClearDays();
  /// The type of a day, none when it has none.
  const DayType* TypeOf(const XCDateTime& date) const;

  /// Paints a day as the user does, with the type in force and its rules. False for a day that
  /// can't be painted.
  bool Paint(const XCDateTime& date);

 private:
  friend class host::UserInput;
  struct Span {
    std::int64_t first;
    std::int64_t last;
  };

  std::array<XCBasicString, 12> monthNames_;
  std::array<XCBasicString, 7> weekdayNames_;
  int minYear_ = 1;
  int maxYear_ = 9999;
  int shownYear_ = 1;
  std::vector<Span> disabled_;
  DayType selType_;
  bool disableUnselect_ = false;
  std::map<std::int64_t, DayType> days_;  // by day number
};
