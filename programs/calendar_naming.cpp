#include "programs/calendar_naming.h"

#include "host/dialogs/identification_dlg.h"
#include "host/services/files.h"
#include "programs/calendar_names.h"
#include "programs/calendar_store.h"

namespace lamp {
namespace {

using host::TextId;

bool mayWrite(XCBaseDlg& parent, const CalendarDocument& calendar,
              const std::filesystem::path& file) {
  if (!host::fileSystem().exists(file)) return true;
  XmlDocument present;
  const XCBasicString ownMark = calendar.root().Value(calendar::HasModule);
  if (readCalendar(file, present) && !isOfKind(present, ownMark)) {
    parent.MessageBox(TextId::CalendarOfOtherKind);
    return false;
  }
  return parent.MessageBox(TextId::OverwriteCalendarQuestion, host::MessageButtons::yesNo,
                           host::MessageIcon::question) == IDYES;
}

}  // namespace

std::optional<CalendarTarget> askForTarget(XCBaseDlg& parent, const CalendarDocument& calendar,
                                           XCBasicString proposed) {
  for (;; proposed.Empty()) {
    CDlgIntroduceIdentification entry(&parent, XCLoadString(TextId::SaveCalendarAs),
                                      XCLoadString(TextId::Name), proposed);
    if (entry.DoModal() != IDOK) return std::nullopt;
    const auto file = calendarFile(entry.Identification());
    if (file && mayWrite(parent, calendar, *file))
      return CalendarTarget{entry.Identification(), *file};
  }
}

}  // namespace lamp
