// Calendar files of any content under any name: loaded, painted, saved and loaded again, and the
// dialogs that do it, none of which may leave the folder.

#include <algorithm>
#include <string>

#include "fuzz/dialogs/made_up_host.h"
#include "fuzz/fault.h"
#include "host/text/utf.h"
#include "programs/calendar_document.h"
#include "programs/calendar_editor.h"
#include "programs/calendar_selection.h"
#include "programs/calendar_store.h"
#include "programs/calendar_year.h"
#include "programs/day_types.h"
#include "programs/day_types_dialog.h"
#include "programs/year_view.h"

namespace {

using fuzz::expect;

/// A year view without a dialog.
class LoneView : private host::ControlOwner {
 public:
  LoneView() : view(*this, host::ControlSpec{}) {}
  XCCalendar view;

 private:
  void onNotice(host::Control&, host::Notice, int) override {}
  void onChanged(host::Control&) override {}
};

XCDateTime chosenDate(fuzz::Input& input) {
  const int year = 2000 + static_cast<int>(input.below(100));
  const XCDateTime date(year, 1 + static_cast<int>(input.below(12)),
                        1 + static_cast<int>(input.below(31)));
  return date.isValidDate() ? date : XCDateTime(year, 2, 28);
}

// Every day of the span shows what the year string says, and makes the same string again.
std::u16string paintedYear(const XCDateTime& today, std::u16string_view stored) {
  const lamp::CalendarSpan span = lamp::calendarSpan(today);
  LoneView lone;
  lamp::YearView year(lone.view, span);
  year.initialise();
  year.apply(stored);
  const std::u16string read = lamp::readYear(stored);
  for (XCDateTime day = span.first; day <= span.last; day = day.AddDays(1)) {
    const std::size_t slot = lamp::slotOf(day);
    expect(lamp::dateOf(slot, span) == day, "a slot of the span stands for its day");
    const XCCalendar::DayType* type = lone.view.TypeOf(day);
    expect(type != nullptr && type->id.str() == std::u16string(1, read[slot]),
           "a day shows the type of its slot");
  }
  const std::u16string painted = year.year();
  expect(painted.size() == lamp::YearSlots, "a year has 366 slots");
  for (std::size_t slot = 0; slot < painted.size(); ++slot)
    expect(painted[slot] == read[slot] || !lamp::dateOf(slot, span).isValidDate() ||
               lamp::dateOf(slot, span) < span.first || lamp::dateOf(slot, span) > span.last,
           "what was painted makes the year string again");
  return painted;
}

// Where @p today is given, the year is painted and made again before it is saved.
void saveAndLoad(const std::filesystem::path& file, const XCDateTime* today, lamp::ProgramKind kind,
                 const XCBasicString& name) {
  lamp::CalendarDocument calendar(kind);
  if (!calendar.load(file)) {
    expect(calendar.root().Value("name").IsEmpty() && !calendar.changed(),
           "what is no calendar leaves the new one");
    return;
  }
  expect(!calendar.changed(), "a calendar that was loaded is unchanged");
  if (today != nullptr) calendar.setYear(paintedYear(*today, calendar.year()));
  XmlDocument::XmlNode* days = calendar.root().Node("days");
  lamp::completeDays(days != nullptr ? *days : calendar.root().NewChild("days"), kind);
  const auto to = lamp::calendarFile(name);
  if (!to) return;
  expect(to->lexically_normal().parent_path() == lamp::calendarFolder(), "a name stays inside");
  if (!calendar.save(*to, name)) return;
  lamp::CalendarDocument again(kind);
  expect(again.load(to), "a calendar that was saved can be loaded");
  expect(again.root() == calendar.root() && !calendar.changed(), "it is loaded as it was saved");
}

void showDialogs(fuzz::MadeUpHost& host, fuzz::Input& input, lamp::ProgramKind kind) {
  static XCDriverDeviceZelLampManager driver{
      XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"), XCBasicString(u"Main street"), {}};
  if (input.flag()) {
    XCDeviceCalendarSelectionZelLAMPManager selection(nullptr, kind);
    host.show(selection);
  } else {
    XCDeviceCalendarZelLAMPManager editor(nullptr, &driver, host.device(), kind);
    host.show(editor);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string names = input.line();
  fuzz::MadeUpHost host(input);
  const auto kind = input.flag() ? lamp::ProgramKind::clock : lamp::ProgramKind::interval;
  const XCDateTime today = chosenDate(input);
  host.setClock(today);
  const auto name = XCBasicString::FromUtf8(names);
  const std::filesystem::path folder = lamp::calendarFolder();
  host.files().put(folder / "first.xclmc", host.controller().text(0));
  host.files().put(folder / "second.xclmc", host.controller().text(1));
  saveAndLoad(folder / "first.xclmc", &today, kind, name);
  saveAndLoad(folder / "second.xclmc", nullptr, kind, XCBasicString(u"first"));
  lamp::storedCalendars();
  host.device()->SetValue("calendar", input.flag() ? name.str() : u"first");
  showDialogs(host, input, kind);
  return 0;
}
