#include "host/dialogs/host_templates.h"

#include "host/dialogs/options_dlg.h"

namespace host {
namespace {

DialogTemplate optionsTemplate() {
  // Button 0 is the driver's, 1 the device's, 2 to 4 the host's, 5 to 7 the generic operations'.
  const auto numbered = [](int number, std::string name, TextId text = TextId::None) {
    return button(XCDlgOptions::ButtonId(number), std::move(name), text);
  };
  return {OptionsTemplate,
          "XCDlgOptions",
          "",
          {numbered(0, "driver", TextId::DriverSettings),
           numbered(1, "device", TextId::DeviceSettings), hidden(numbered(2, "host1")),
           hidden(numbered(3, "host2")), hidden(numbered(4, "host3")),
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

}  // namespace

const std::vector<DialogTemplate>& hostTemplates() {
  static const std::vector<DialogTemplate> templates = {optionsTemplate(), driverDeviceTemplate()};
  return templates;
}

}  // namespace host
