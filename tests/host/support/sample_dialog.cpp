#include "tests/host/support/sample_dialog.h"

namespace sample {

namespace {

host::DialogTemplate makeTemplate() {
  return {Template,
          "SampleDialog",
          "Sample",
          {host::label(Id::Title, "title", host::TextId::Name),
           host::group(Id::Box, "box"),
           host::button(Id::Push, "push"),
           host::button(Id::Other, "other"),
           host::radio(Id::RadioA, "radioA"),
           host::radio(Id::RadioB, "radioB"),
           host::radio(Id::RadioC, "radioC"),
           host::label(Id::Gap, "gap"),
           host::radio(Id::RadioD, "radioD"),
           host::check(Id::Box1, "check"),
           host::edit(Id::Free, "free"),
           host::edit(Id::Limited, "limited", 59),
           host::digitsEdit(Id::Digits, "digits", 5),
           host::edit(Id::Masked, "masked"),
           host::passwordEdit(Id::Secret, "secret", 8),
           host::readOnlyEdit(Id::ReadOnly, "readOnly"),
           host::combo(Id::Choice, "choice"),
           host::list(Id::Rows, "rows"),
           host::singleSelectList(Id::OneRow, "oneRow"),
           host::ipAddress(Id::Ip, "ip"),
           host::year(Id::Year, "year"),
           host::image(Id::Picture, "picture", "program-icon.png"),
           host::disabled(host::button(Id::Disabled, "disabled")),
           host::hidden(host::edit(Id::Hidden, "hidden")),
           host::edit(Id::Unnamed, "private"),
           host::okButton(),
           host::cancelButton()}};
}

}  // namespace

Module::Module() {
  module_.name = "sample";
  module_.templates = {{Template, &makeTemplate}};
  host::registerModule(module_);
}

Module::~Module() {
  host::unregisterModule(module_);
}

bool Dialog::OnInitDialog() {
  const bool chooseFocus = XCBaseDlg::OnInitDialog();
  Edit(Id::Masked).setMask({u"DD DD DDDD DD:DD:DD", u"__/__/____ __:__:__", u'0', u"0123456789"});
  for (int i = 0; i < 3; ++i)
    Combo(Id::Choice).addItem(XCBasicString::Format(u"entry %d", i), 10 * i);
  Get<XCCalendar>(Id::Year).SetMinYear(2025);
  Get<XCCalendar>(Id::Year).SetMaxYear(2026);
  if (onInit) onInit(*this);
  return chooseFocus;
}

void Dialog::OnOK() {
  log.push_back("ok");
  if (!onOk || onOk()) EndDialog(IDOK);
}

void Dialog::noteClick(int id) {
  log.push_back("click " + std::to_string(id));
  const auto& call = id == Id::Push ? onPush : onOther;
  if ((id == Id::Push || id == Id::Other) && call) call();
}
void Dialog::noteChange(int id) {
  log.push_back("change " + std::to_string(id));
  if (onChange) onChange(*this);
}
void Dialog::noteChoose(int id) {
  log.push_back("choose " + std::to_string(id));
}
void Dialog::noteSelection(int id) {
  log.push_back("selection " + std::to_string(id));
}
void Dialog::noteDoubleClick(int id, int row) {
  log.push_back("double " + std::to_string(id) + " " + std::to_string(row));
}
void Dialog::noteKey(int id, int key) {
  log.push_back("key " + std::to_string(id) + " " + std::to_string(key));
}
void Dialog::notePaint(int id) {
  log.push_back("paint " + std::to_string(id));
}
void Dialog::notePosted(int parameter) {
  log.push_back("posted " + std::to_string(parameter));
}

const host::MessageMap* Dialog::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&Dialog::noteClick>(Id::Push, Id::Box1),
      host::onChange<&Dialog::noteChange>(Id::Free, Id::Unnamed),
      host::onChoose<&Dialog::noteChoose>(Id::Choice),
      host::onSelection<&Dialog::noteSelection>(Id::Rows),
      host::onSelection<&Dialog::noteSelection>(Id::OneRow),
      host::onDoubleClick<&Dialog::noteDoubleClick>(Id::Rows),
      host::onKey<&Dialog::noteKey>(Id::Rows),
      host::onPaint<&Dialog::notePaint>(Id::Year),
      host::onPosted<&Dialog::notePosted>(Posted)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

}  // namespace sample
