#include "pages/general_settings_page.h"

#include <iterator>

#include "exchange/template_numbers.h"

using host::TextId;
using lamp::FieldKind;
using lamp::FieldSpec;
namespace layout = host::layout;

namespace {

enum Id { ClockLabel = host::privateId(0), Clock, SetClock, FirstField = host::privateId(100) };

// What stands where in the page's list of frames.
constexpr std::size_t DateFrame = 7;

const std::vector<lamp::FieldChoice> NoYes = {{TextId::SettingNo, u'N'},
                                              {TextId::SettingYes, u'Y'}};
const std::vector<lamp::FieldChoice> PriorityChoices = {{TextId::PriorityNo, u'N'},
                                                        {TextId::SettingYes, u'Y'}};
const std::vector<lamp::FieldChoice> FilterChoices = {
    {TextId::SettingNo, u'0'}, {TextId::SettingYes, u'1'}, {TextId::Automatic, u'2'}};
const std::vector<lamp::FieldChoice> ReportFormatChoices = {
    {TextId::ReportFormatStandard, u'0'}, {TextId::ReportFormatAlternative, u'1'}};
// The zones' names are the page's own in every language.
const std::vector<lamp::FieldChoice> TimeZones = {{u"Madrid - París - Berlin", u'0'},
                                                  {u"Londres - Lisboa", u'1'},
                                                  {u"Atenas - Helsinki", u'2'},
                                                  {u"Buenos Aires", u'3'},
                                                  {u"Brasil", u'4'},
                                                  {u"Colombia", u'5'},
                                                  {u"Centro América", u'6'}};

const FieldSpec Fields[] = {
    {"AccInacTimeout", FieldKind::digits, TextId::InactivityTimeout, TextId::MinutesUnit},
    {"AccSimulMax", FieldKind::digits, TextId::MaximumSimultaneousAccesses},
    {"IPNTP", FieldKind::text, TextId::Address},
    {"NTPMaxDeviation", FieldKind::digits, TextId::MaximumDeviation, TextId::SecondsUnit},
    {"IPftp", FieldKind::text, TextId::Address},
    {"FTPUser", FieldKind::text, TextId::User},
    {"FTPPwd", FieldKind::text, TextId::Password},  // in clear, unlike the mail account: deliberate
    {"PathReports", FieldKind::text, TextId::ReportsPath},
    {"RetryFtp", FieldKind::digits, TextId::Retries},
    {"TimeBetwFtp", FieldKind::digits, TextId::TimeBetweenRetries, TextId::SecondsUnit},
    {"FtpServer", FieldKind::choice, TextId::FtpServer, TextId::None, NoYes},
    {"FtpsServer", FieldKind::choice, TextId::FtpsServer, TextId::None, NoYes},
    {"mailHost", FieldKind::text, TextId::Address},
    {"mailUser", FieldKind::writeOnly, TextId::User},
    {"mailPassword", FieldKind::writeOnly, TextId::Password},
    {"mainMail", FieldKind::text, TextId::MailAddress},
    {"destinationMail", FieldKind::text, TextId::DestinationMailAddress},
    {"Priority", FieldKind::choice, TextId::Priority, TextId::None, PriorityChoices},
    {"TimeSendReq", FieldKind::digits, TextId::RequestSendingTime},
    {"TimeDisconNode", FieldKind::digits, TextId::NodeDisconnectionTime},
    {"RetryDisconNode", FieldKind::digits, TextId::Retries},
    {"TimeRetryInterval", FieldKind::digits, TextId::TimeBetweenRetries, TextId::SecondsUnit},
    {"ValuesCheckDelay", FieldKind::digits, TextId::ValuesCheckDelay, TextId::SecondsUnit},
    {"MaxOrderOutdate", FieldKind::digits, TextId::MaximumOrderAge, TextId::SecondsUnit},
    {"TimeDelayRestart", FieldKind::digits, TextId::RestartDelay, TextId::SecondsUnit},
    {"activeFilterTime", FieldKind::choice, TextId::FilterInterval, TextId::None, FilterChoices},
    {"hourIni", FieldKind::digits, TextId::StartTime},
    {"hourEnd", FieldKind::digits, TextId::EndTime},
    {"name", FieldKind::text, TextId::ControllerName},
    {"ReportFormat", FieldKind::choice, TextId::ReportFormat, TextId::None, ReportFormatChoices},
    {"viewNodes", FieldKind::choice, TextId::ShowNodes, TextId::None, NoYes},
    {"TimeZone", FieldKind::choice, TextId::TimeZone, TextId::None, TimeZones},
};

constexpr lamp::FieldFrame Frames[] = {{TextId::Communication, 2}, {TextId::Ntp, 2},
                                       {TextId::Ftp, 8},           {TextId::Mail, 5},
                                       {TextId::Nodes, 8},         {TextId::FilterInterval, 3},
                                       {TextId::Others, 3},        {TextId::ControllerClock, 1}};

lamp::FieldSet makeFields() {
  return {Fields, Frames, Id::FirstField};
}

}  // namespace

CDlgE01CfgZelLampManager::CDlgE01CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::GeneralSettings, lamp::section::GeneralRead, driver,
                   parent),
      fields_(makeFields()),
      clock_(*this, Id::Clock) {}

host::DialogTemplate CDlgE01CfgZelLampManager::Template() {
  host::DialogTemplate dialog{
      lamp::template_number::GeneralSettings, "CDlgE01CfgZelLampManager", "E01", {}};
  const lamp::FieldSet fields = makeFields();
  const auto add = [&](const std::vector<host::ControlSpec>& controls) {
    dialog.controls.insert(dialog.controls.end(), controls.begin(), controls.end());
  };
  for (std::size_t frame = 0; frame < DateFrame; ++frame) add(fields.frameControls(frame));
  add({host::label(Id::ClockLabel, "clockLabel", TextId::DateAndTime),
       host::edit(Id::Clock, "clock"),
       host::button(Id::SetClock, "setClock", TextId::Send, "OK-16.png")});
  add(fields.frameControls(DateFrame));
  add({host::okButton(), host::cancelButton()});
  return dialog;
}

const host::MessageMap* CDlgE01CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&CDlgE01CfgZelLampManager::OnSetClock>(Id::SetClock)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE01CfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::Parameters));
  clock_.initialise();
  const XmlDocument::XmlNode* section = Section();
  fields_.fill(*this, section);
  if (section != nullptr) clock_.showStampPieces(section->getAttribute(lamp::attribute::Stamp));
  return SettingsPage::OnInitDialog();
}

void CDlgE01CfgZelLampManager::Layout() {
  host::LayoutItem date = fields_.frameLayout(DateFrame);
  date.items.insert(date.items.begin(), XCHoritzontalLayout({layout::control(Id::ClockLabel),
                                                             layout::control(Id::Clock, 1),
                                                             layout::control(Id::SetClock)}));
  const auto column = [this](std::initializer_list<std::size_t> frames) {
    std::vector<host::LayoutItem> items;
    for (const std::size_t frame : frames) items.push_back(fields_.frameLayout(frame));
    items.push_back(layout::stretch());
    return XCVerticalLayout(std::move(items), 1);
  };
  host::LayoutItem last = column({5, 6});
  last.items.insert(last.items.end() - 1, std::move(date));
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout({column({0, 1, 2}), column({3, 4}), std::move(last)}, 1),
       layout::okCancelRow()}));
}

bool CDlgE01CfgZelLampManager::Write() {
  XmlDocument::XmlNode& written = lamp::beginWrite(Document(), lamp::section::GeneralWrite);
  fields_.put(*this, written);
  return lamp::finishWrite(*this, written);
}

void CDlgE01CfgZelLampManager::OnSetClock() {
  const std::optional<XCBasicString> stamp = clock_.checkedStamp();
  if (!stamp) return;
  XmlDocument command;
  lamp::beginWrite(command, lamp::section::ClockWrite).setAttribute(lamp::attribute::Date, *stamp);
  lamp::sendOnce(*this, lamp::Command::setClock, command);
}
