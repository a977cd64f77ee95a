#include "host/dialogs/host_templates.h"

#include "host/dialogs/options_dlg.h"

namespace host {
namespace {

DialogTemplate optionsTemplate() {
  // Button 0 is the driver's, 1 the device's, 2 to 4 the host's, 5 to 7 the generic operations'.
  const auto numbered = [](int number, std::string name, TextId text = TextId::None) {
    return button(XCDlgOptions::ButtonId(number), std::move(name), text);
  };
  return {
      OptionsTemplate,
      "XCDlgOptions",
      "",
      {numbered(0, "driver", TextId::DriverSettings), numbered(1, "device", TextId::DeviceSettings),
       hidden(numbered(2, "host1")), hidden(numbered(3, "host2")), hidden(numbered(4, "host3")),
       hidden(numbered(5, "generic1")), hidden(numbered(6, "generic2")),
       hidden(numbered(7, "generic3")), okButton(TextId::Close, "EXIT-16.png")}};
}

DialogTemplate driverDeviceTemplate() {
  using Id = DriverDeviceControl;
  return {DriverDeviceTemplate,
          "XCDlgDriverDeviceCfg",
          "",
          {label(Id::NameLabel, "nameLabel", TextId::Name), readOnlyEdit(Id::NameEdit, "name"),
           label(Id::DescriptionLabel, "descriptionLabel", TextId::Description),
           readOnlyEdit(Id::DescriptionEdit, "description"),
           group(Id::ViewGroup, "view", TextId::ViewSetup),
           check(Id::HistoricCheck, "historic", TextId::Historic),
           label(Id::PeriodLabel, "periodLabel", TextId::RecordingPeriod),
           digitsEdit(Id::PeriodEdit, "period", 5), okButton(), cancelButton()}};
}

DialogTemplate identificationTemplate() {
  using Id = IdentificationControl;
  // The entry has no limit: a name that is too long is answered, not cut.
  return {
      IdentificationTemplate,
      "CDlgIntroduceIdentification",
      "",
      {label(Id::Label, "label"), edit(Id::Entry, "identification"), okButton(), cancelButton()}};
}

DialogTemplate fastSelectionTemplate() {
  using Id = FastSelectionControl;
  static constexpr const char* WeekdayNames[WeekdayCount] = {
      "monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};
  const auto text = [](TextId first, int index) {
    return static_cast<TextId>(textNumber(first) + index);
  };
  DialogTemplate made{FastSelectionTemplate,
                      "CDlgFastSelection",
                      "",
                      {group(Id::MonthsGroup, "months", TextId::Months)}};
  for (int i = 0; i < MonthCount; ++i)
    made.controls.push_back(
        check(Id::FirstMonth + i, "month" + std::to_string(i + 1), text(TextId::January, i)));
  made.controls.push_back(group(Id::WeekdaysGroup, "weekdays", TextId::WeekDays));
  for (int i = 0; i < WeekdayCount; ++i)
    made.controls.push_back(check(Id::FirstWeekday + i, WeekdayNames[i], text(TextId::Monday, i)));
  made.controls.push_back(label(Id::DayTypeLabel, "dayTypeLabel", TextId::DayType));
  made.controls.push_back(image(Id::Swatch, "dayTypeColour", ""));
  made.controls.push_back(combo(Id::DayType, "dayType"));
  made.controls.push_back(okButton());
  made.controls.push_back(cancelButton());
  return made;
}

}  // namespace

const std::vector<DialogTemplate>& hostTemplates() {
  static const std::vector<DialogTemplate> templates = {
      optionsTemplate(), driverDeviceTemplate(), identificationTemplate(), fastSelectionTemplate()};
  return templates;
}

}  // namespace host
