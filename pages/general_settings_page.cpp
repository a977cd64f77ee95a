#include "pages/general_settings_page.h"

#include <iterator>

#include "exchange/template_numbers.h"
#include "pages/binding/section_write.h"

using host::TextId;
namespace layout = host::layout;

namespace {

enum Id { ClockLabel = host::privateId(0), Clock, SetClock, FirstField = host::privateId(100) };

// What stands where in the page's list of frames.
constexpr std::size_t DateFrame = 7;

const std::vector<host::ValueChoice> NoYes = {{TextId::SettingNo, u'N'},
                                              {TextId::SettingYes, u'Y'}};
const std::vector<host::ValueChoice> PriorityChoices = {{TextId::PriorityNo, u'N'},
                                                        {TextId::SettingYes, u'Y'}};
const std::vector<host::ValueChoice> FilterChoices = {
    {TextId::SettingNo, u'0'}, {TextId::SettingYes, u'1'}, {TextId::Automatic, u'2'}};
const std::vector<host::ValueChoice> ReportFormatChoices = {
    {TextId::ReportFormatStandard, u'0'}, {TextId::ReportFormatAlternative, u'1'}};
// The zones' names are the page's own in every language.
const std::vector<host::ValueChoice> TimeZones = {{u"Madrid - París - Berlin", u'0'},
                                                  {u"Londres - Lisboa", u'1'},
                                                  {u"Atenas - Helsinki", u'2'},
                                                  {u"Buenos Aires", u'3'},
                                                  {u"Brasil", u'4'},
                                                  {u"Colombia", u'5'},
                                                  {u"Centro América", u'6'}};

std::vector<host::Binding> tableRows() {
  using namespace lamp;
  return {
      numberField("AccInacTimeout", TextId::InactivityTimeout, TextId::MinutesUnit),
      numberField("AccSimulMax", TextId::MaximumSimultaneousAccesses),
      textField("IPNTP", TextId::Address),
      numberField("NTPMaxDeviation", TextId::MaximumDeviation, TextId::SecondsUnit),
      textField("IPftp", TextId::Address),
      textField("FTPUser", TextId::User),
      secretField("FTPPwd", TextId::Password),  // in clear, unlike the mail account: deliberate
      textField("PathReports", TextId::ReportsPath),
      numberField("RetryFtp", TextId::Retries),
      numberField("TimeBetwFtp", TextId::TimeBetweenRetries, TextId::SecondsUnit),
      choiceField("FtpServer", TextId::FtpServer, NoYes),
      choiceField("FtpsServer", TextId::FtpsServer, NoYes),
      textField("mailHost", TextId::Address),
      writeOnlyField("mailUser", TextId::User),
      writeOnlyField("mailPassword", TextId::Password),
      textField("mainMail", TextId::MailAddress),
      textField("destinationMail", TextId::DestinationMailAddress),
      choiceField("Priority", TextId::Priority, PriorityChoices),
      numberField("TimeSendReq", TextId::RequestSendingTime),
      numberField("TimeDisconNode", TextId::NodeDisconnectionTime),
      numberField("RetryDisconNode", TextId::Retries),
      numberField("TimeRetryInterval", TextId::TimeBetweenRetries, TextId::SecondsUnit),
      numberField("ValuesCheckDelay", TextId::ValuesCheckDelay, TextId::SecondsUnit),
      numberField("MaxOrderOutdate", TextId::MaximumOrderAge, TextId::SecondsUnit),
      numberField("TimeDelayRestart", TextId::RestartDelay, TextId::SecondsUnit),
      choiceField("activeFilterTime", TextId::FilterInterval, FilterChoices),
      numberField("hourIni", TextId::StartTime),
      numberField("hourEnd", TextId::EndTime),
      textField("name", TextId::ControllerName),
      choiceField("ReportFormat", TextId::ReportFormat, ReportFormatChoices),
      choiceField("viewNodes", TextId::ShowNodes, NoYes),
      choiceField("TimeZone", TextId::TimeZone, TimeZones),
  };
}

constexpr lamp::FieldFrame Frames[] = {{TextId::Communication, 2}, {TextId::Ntp, 2},
                                       {TextId::Ftp, 8},           {TextId::Mail, 5},
                                       {TextId::Nodes, 8},         {TextId::FilterInterval, 3},
                                       {TextId::Others, 3},        {TextId::ControllerClock, 1}};

host::PageDescription makeTable() {
  std::vector<host::Binding> fields = tableRows();
  lamp::layOut(fields, Frames, Id::FirstField);
  return lamp::changedFields(lamp::section::GeneralRead, lamp::section::GeneralWrite,
                             std::move(fields));
}

}  // namespace

const host::PageDescription& CDlgE01CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE01CfgZelLampManager::CDlgE01CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : FieldPage(lamp::template_number::GeneralSettings, PageTable(), driver, parent),
      clock_(*this, Id::Clock) {}

host::DialogTemplate CDlgE01CfgZelLampManager::Template() {
  host::DialogTemplate dialog{
      lamp::template_number::GeneralSettings, "CDlgE01CfgZelLampManager", "E01", {}};
  const auto add = [&](const std::vector<host::ControlSpec>& controls) {
    dialog.controls.insert(dialog.controls.end(), controls.begin(), controls.end());
  };
  const auto frame = [](std::size_t number) {
    return lamp::frameControls(PageTable().fields, Frames, Id::FirstField, number);
  };
  for (std::size_t number = 0; number < DateFrame; ++number) add(frame(number));
  add({host::label(Id::ClockLabel, "clockLabel", TextId::DateAndTime),
       host::edit(Id::Clock, "clock"),
       host::button(Id::SetClock, "setClock", TextId::Send, "OK-16.png")});
  add(frame(DateFrame));
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
  if (const XmlDocument::XmlNode* section = Section())
    clock_.showStampPieces(section->getAttribute(lamp::attribute::Stamp));
  return FieldPage::OnInitDialog();
}

void CDlgE01CfgZelLampManager::Layout() {
  const auto frame = [](std::size_t number) {
    return lamp::frameLayout(PageTable().fields, Frames, Id::FirstField, number);
  };
  host::LayoutItem date = frame(DateFrame);
  date.items.insert(date.items.begin(), XCHoritzontalLayout({layout::control(Id::ClockLabel),
                                                             layout::control(Id::Clock, 1),
                                                             layout::control(Id::SetClock)}));
  const auto column = [&](std::initializer_list<std::size_t> frames) {
    std::vector<host::LayoutItem> items;
    for (const std::size_t number : frames) items.push_back(frame(number));
    items.push_back(layout::stretch());
    return XCVerticalLayout(std::move(items), 1);
  };
  host::LayoutItem last = column({5, 6});
  last.items.insert(last.items.end() - 1, std::move(date));
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout({column({0, 1, 2}), column({3, 4}), std::move(last)}, 1),
       layout::okCancelRow()}));
}

void CDlgE01CfgZelLampManager::OnSetClock() {
  const std::optional<XCBasicString> stamp = clock_.checkedStamp();
  if (!stamp) return;
  XmlDocument command;
  lamp::beginWrite(command, lamp::section::ClockWrite).setAttribute(lamp::attribute::Date, *stamp);
  lamp::sendOnce(*this, lamp::Command::setClock, command);
}
