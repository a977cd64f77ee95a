#pragma once

#include <filesystem>
#include <optional>

#include "host/xml/xml_holder.h"
#include "programs/calendar_document.h"
#include "programs/calendar_naming.h"
#include "programs/year_view.h"

namespace lamp {

/// The calendar of a controller as the editor changes it: the painted days, the programs of the day
/// types, and which calendar of the store the controller is given.
class EditedCalendar : public host::EditedPage {
 public:
  /// A calendar of @p kind shown in @p view over the twelve months from today, all days of type 0.
  /// @p device is the controller's element, which names its calendar; null where it has none.
  /// Table, view and element must outlive this.
  EditedCalendar(const host::PageDescription& table, ProgramKind kind, XCCalendar& view,
                 Node* device);

  /// Names months and weekdays and shows all days as type 0.
  void initialise();
  /// Begins a new calendar, with programs of zeros.
  void begin();
  /// Shows the calendar of the store that lies in @p file, under its name. False, with the calendar
  /// as it was, when it can't be read.
  bool load(const XCBasicString& name, const std::optional<std::filesystem::path>& file);
  /// Writes the calendar, which has the target's name from then on. False, with the calendar as it
  /// was, when it can't be written.
  bool save(const CalendarTarget& target);

  YearView& year() { return year_; }
  CalendarDocument& document() { return document_; }
  /// The name of the calendar that is shown.
  const XCBasicString& name() const { return name_; }

  /// Whether something was painted or edited since the calendar was opened, loaded or saved.
  bool changed();
  /// Whether the controller names another calendar than the one that is shown.
  bool isAnother() const;
  /// Names the calendar in the controller's element.
  void assign();

  const host::PageDescription& Description() const override { return table_; }
  const Node* Untouched() const override { return before_.Root(); }
  const Node* Edited() override;

 private:
  void settle();

  const host::PageDescription& table_;
  ProgramKind kind_;
  host::XmlAnchor device_;
  CalendarSpan span_;
  YearView year_;
  CalendarDocument document_;
  std::optional<XCBasicString> openingName_;  // none where the element has none
  XCBasicString name_;
  XmlDocument before_;  // what the table describes, untouched and as it is now
  XmlDocument now_;
};

}  // namespace lamp
