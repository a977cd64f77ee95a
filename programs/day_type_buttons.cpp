#include "programs/day_type_buttons.h"

#include <string>

#include "programs/day_types.h"

namespace lamp {

std::vector<host::ControlSpec> dayTypeButtons(int firstId) {
  std::vector<host::ControlSpec> buttons;
  for (int number = 0; number < DayTypeCount; ++number)
    buttons.push_back(host::radio(firstId + number, "dayType" + std::to_string(number)));
  return buttons;
}

host::LayoutItem dayTypeBox(int groupId, int firstId) {
  std::vector<host::LayoutItem> buttons;
  for (int number = 0; number < DayTypeCount; ++number)
    buttons.push_back(host::layout::control(firstId + number));
  return host::layout::box(groupId, std::move(buttons));
}

void showDayTypes(XCBaseDlg& dialog, int firstId) {
  for (int number = 0; number < DayTypeCount; ++number) {
    const XCCalendar::DayType type = dayType(number);
    dialog.SetDlgItemText(firstId + number, type.name);
    dialog.Check(firstId + number).setSwatch(type.colour);
  }
}

}  // namespace lamp
