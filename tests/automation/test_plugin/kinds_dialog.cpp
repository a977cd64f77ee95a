#include "tests/automation/test_plugin/kinds_dialog.h"

#include "tests/automation/test_plugin/small_dialogs.h"

namespace test_plugin {
namespace {

namespace layout = host::layout;
using host::privateId;

// Numbered controls first, the private ones behind.
enum Id : int {
  NumberedEdit = 1001,
  NumberedList = 1002,
  NumberedButton = 1003,
  Log = privateId(0),
  Box,
  Message,
  Question,
  RetryQuestion,
  File,
  Nested,
  TwoNested,
  Read,
  Post,
  Fill,
  RadioA,
  RadioB,
  TheCheck,
  Digits,
  Password,
  Fixed,
  Masked,
  TheCombo,
  Single,
  Ip,
  Year,
  Picture,
  Disabled,
  Hidden,
};

constexpr int PostedMessage = 7;

}  // namespace

host::DialogTemplate KindsDialog::Template() {
  return {Number,
          "KindsDialog",
          "All kinds",
          {host::edit(NumberedEdit, "edit", 5),
           host::list(NumberedList, "list"),
           host::button(NumberedButton, "image", host::TextId::Ok, "LOAD-16.png"),
           host::label(Log, "log"),
           host::group(Box, "box", host::TextId::Cancel),
           host::button(Message, "message"),
           host::button(Question, "question"),
           host::button(RetryQuestion, "retry"),
           host::button(File, "file"),
           host::button(Nested, "nested"),
           host::button(TwoNested, "twoNested"),
           host::button(Read, "read"),
           host::button(Post, "post"),
           host::button(Fill, "fill"),
           host::radio(RadioA, "radioA"),
           host::radio(RadioB, "radioB"),
           host::check(TheCheck, "check"),
           host::digitsEdit(Digits, "digits", 3),
           host::passwordEdit(Password, "password", 8),
           host::readOnlyEdit(Fixed, "fixed"),
           host::edit(Masked, "masked"),
           host::combo(TheCombo, "combo"),
           host::singleSelectList(Single, "single"),
           host::ipAddress(Ip, "ip"),
           host::year(Year, "year"),
           host::image(Picture, "picture", "program-icon.png"),
           host::disabled(host::edit(Disabled, "disabled")),
           host::hidden(host::button(Hidden, "hidden")),
           host::okButton(),
           host::cancelButton()}};
}

const host::MessageMap* KindsDialog::GetMessageMap() const {
  using D = KindsDialog;
  static constexpr host::MessageEntry entries[] = {host::onChange<&D::OnEdit>(NumberedEdit),
                                                   host::onChange<&D::OnEdit>(Digits, Masked),
                                                   host::onChange<&D::OnEdit>(Ip),
                                                   host::onClick<&D::OnClickBox>(RadioA, TheCheck),
                                                   host::onChoose<&D::OnChosen>(TheCombo),
                                                   host::onSelection<&D::OnRows>(NumberedList),
                                                   host::onSelection<&D::OnRows>(Single),
                                                   host::onDoubleClick<&D::OnRow>(NumberedList),
                                                   host::onKey<&D::OnListKey>(NumberedList),
                                                   host::onPaint<&D::OnPainted>(Year),
                                                   host::onClick<&D::OnMessage>(Message),
                                                   host::onClick<&D::OnQuestion>(Question),
                                                   host::onClick<&D::OnRetry>(RetryQuestion),
                                                   host::onClick<&D::OnFile>(File),
                                                   host::onClick<&D::OnNested>(Nested),
                                                   host::onClick<&D::OnTwoNested>(TwoNested),
                                                   host::onClick<&D::OnRead>(Read),
                                                   host::onClick<&D::OnPost>(Post),
                                                   host::onClick<&D::OnFill>(Fill),
                                                   host::onPosted<&D::OnPosted>(PostedMessage)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool KindsDialog::OnInitDialog() {
  GetDlgItem(Box).setText(u"Box \u00E9");
  GetDlgItem(Fixed).setText(u"as it is");
  GetDlgItem(Disabled).setEnabled(false, u"there is no reason");
  Edit(Masked).setMask(host::TextMask(u"DDsDD", u"__:__", u'0', u"1234567890"));
  Edit(Masked).setText(u"00:00");
  for (const char16_t* text : {u"one", u"two", u"three"}) Combo(TheCombo).addItem(text);
  Check(RadioA).setOn(true);
  fillList();
  fillYear();
  GetDlgItem(Log).setText(u"");
  return XCBaseDlg::OnInitDialog();
}

void KindsDialog::fillList() {
  XmlDocument::XmlNode& root = rows_.Create("rows");
  const host::XmlName name("name");
  const host::XmlName value("value");
  for (const int id : {int{NumberedList}, int{Single}}) {
    List(id).setColumns({{u"Name", 1, name, {}, {}, {}}, {u"Value", 1, value, {}, {}, {}}});
    for (const char16_t* text : {u"b", u"a", u"c"}) {
      XmlDocument::XmlNode& row = root.NewChild("row");
      row.setAttribute(name, text);
      row.setAttribute(value, u"\"1\"");
      List(id).addRow({&row, 0});
    }
  }
  List(NumberedList).setColour(1, {0xA0, 0xA0, 0xA0});
  List(NumberedList).setColour(2, {0, 0, 0});
  List(NumberedList).setSwatch(2, {0xFF, 0, 0x10});
}

void KindsDialog::fillYear() {
  auto& calendar = Get<XCCalendar>(Year);
  calendar.SetMinYear(2025);
  calendar.SetMaxYear(2026);
  calendar.Disable({2025, 1, 1}, {2025, 12, 29});
  calendar.Disable({2026, 1, 2}, {2026, 12, 31});
  calendar.SelectDay({2025, 12, 30}, {u"3", {1, 2, 3}, u"Day 3"});
  calendar.SetSelType({9, 9, 9}, u"5");
}

bool KindsDialog::addUriParams(XCBasicString& uri, bool first) {
  addUriParam(uri, u"address", u"127.0.0.1", first);
  addUriParam(uri, u"socket", GetDlgItemText(NumberedEdit), false);
  addUriParam(uri, u"ftpPassword", u"secret", false);
  return true;
}

void KindsDialog::note(std::u16string_view what) {
  GetDlgItem(Log).setText(GetDlgItemText(Log).str() + std::u16string(what) + u";");
}

void KindsDialog::OnEdit(int id) {
  note(u"edit " + GetDlgItemText(id).str());
}
void KindsDialog::OnClickBox(int id) {
  note(Check(id).isOn() ? std::u16string_view(u"on") : std::u16string_view(u"off"));
}
void KindsDialog::OnChosen(int) {
  note(u"chosen");
}
void KindsDialog::OnRows(int id) {
  note(u"rows " + host::decimal(static_cast<int>(List(id).selection().size())).str());
}
void KindsDialog::OnRow(int, int row) {
  note(u"row " + host::decimal(row).str());
}
void KindsDialog::OnListKey(int, int key) {
  note(u"key " + host::decimal(key).str());
}
void KindsDialog::OnPainted(int) {
  note(u"painted");
}

void KindsDialog::OnMessage() {
  MessageBox(u"A \"message\"", host::MessageButtons::ok, host::MessageIcon::information);
  note(u"read");
}

void KindsDialog::OnQuestion() {
  const int answer =
      MessageBox(u"Really?", host::MessageButtons::yesNo, host::MessageIcon::question);
  note(answer == IDYES ? std::u16string_view(u"yes") : std::u16string_view(u"no"));
}

void KindsDialog::OnRetry() {
  while (MessageBox(u"Again?", host::MessageButtons::retryCancel, host::MessageIcon::error) ==
         IDRETRY)
    note(u"retry");
  note(u"cancel");
}

void KindsDialog::OnFile() {
  const auto path = host::services().frontEnd().openFile({this, {{u"Images", "*.img"}}});
  note(u"file " + path.u16string());
}

void KindsDialog::OnNested() {
  InnerDialog inner(this);
  note(inner.DoModal() == IDOK ? std::u16string_view(u"ok") : std::u16string_view(u"cancel"));
}

// Closes with what it opened: one command closes two windows.
void KindsDialog::OnTwoNested() {
  InnerDialog inner(this);
  EndDialog(inner.DoModal());
}

void KindsDialog::OnRead() {
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("E01").setAttribute("FTPPwd", u"secret");
  if (getCommand(1, &document, true))
    note(document.Root() ? XCBasicString::FromUtf8(document.Root()->Tag())
                         : XCBasicString(u"none"));
  else
    note(silentFailure() ? XCBasicString(u"silent") : getErrorMsg());
}

void KindsDialog::OnPost() {
  PostMessage(PostedMessage, 42);
  note(u"posting");
}

void KindsDialog::OnPosted(int parameter) {
  note(u"posted " + host::decimal(parameter).str());
}

// Fills the list with a hundred thousand rows.
void KindsDialog::OnFill() {
  constexpr int Rows = 100'000;
  XmlDocument::XmlNode& root = rows_.Create("rows");
  List(NumberedList).clearRows();
  List(Single).clearRows();
  for (int i = 0; i < Rows; ++i) {
    XmlDocument::XmlNode& row = root.NewChild("row");
    row.setAttribute("name", host::decimal(i));
    row.setAttribute("value", u"100");
    List(NumberedList).addRow({&row, i});
  }
}

}  // namespace test_plugin
