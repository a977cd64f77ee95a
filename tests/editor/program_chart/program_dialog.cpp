#include "tests/editor/program_chart/program_dialog.h"

#include <string>

namespace program_dialog {
namespace {

constexpr int Fields = Id::LastField - Id::FirstField + 1;

host::DialogTemplate makeTemplate(const char* className, const char* list) {
  host::DialogTemplate dialog{Template, className, "Programs", {host::list(Id::Nodes, list)}};
  for (int step = 1; step <= 4; ++step) {
    dialog.controls.push_back(host::digitsEdit(timeEdit(step), "time" + std::to_string(step), 3));
    dialog.controls.push_back(host::digitsEdit(powerEdit(step), "power" + std::to_string(step), 3));
  }
  dialog.controls.push_back(host::okButton());
  dialog.controls.push_back(host::cancelButton());
  return dialog;
}

}  // namespace

Module::Module(const char* className, const char* list) {
  module_.name = "programs";
  module_.templates.emplace_back(makeTemplate(className, list));
  host::registerModule(module_);
}

Module::~Module() {
  host::unregisterModule(module_);
}

host::XmlName Dialog::attribute(int field) {
  static const std::array<host::XmlName, Fields> names = {"t1", "p1", "t2", "p2",
                                                          "t3", "p3", "t4", "p4"};
  return names[static_cast<std::size_t>(field)];
}

bool Dialog::OnInitDialog() {
  rows_.Create("rows");
  std::vector<host::ListColumn> columns(1 + Fields);
  for (int field = 0; field < Fields; ++field)
    columns[static_cast<std::size_t>(field) + 1].attribute = attribute(field);
  nodes().setColumns(std::move(columns));
  for (int step = 1; clock_ && step <= 4; ++step) {
    host::EditControl& time = Edit(timeEdit(step));
    time.setLimit(5);
    time.setDigitsOnly(false);
    time.setMask({u"DD DD", u"__:__", u'0', u"0123456789"});
  }
  return XCBaseDlg::OnInitDialog();
}

void Dialog::Layout() {
  std::vector<host::LayoutItem> fields;
  for (int field = 0; field < Fields; ++field)
    fields.push_back(host::layout::control(Id::FirstField + field));
  SetLayout(
      XCVerticalLayout({host::layout::control(Id::Nodes, 1),
                        host::layout::grid(4, std::move(fields)), host::layout::okCancelRow()}));
}

XmlDocument::XmlNode& Dialog::addRow(const std::array<const char16_t*, 8>& cells) {
  XmlDocument::XmlNode& row = rows_.Root()->NewChild("row");
  for (int field = 0; field < Fields; ++field)
    row.setAttribute(attribute(field), cells[static_cast<std::size_t>(field)]);
  nodes().addRow({&row});
  return row;
}

const host::MessageMap* Dialog::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Dialog::onSelection>(Id::Nodes),
      host::onChange<&Dialog::onChange>(Id::FirstField, Id::LastField)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

void Dialog::onSelection() {
  const auto& selected = nodes().selection();
  if (selected.empty()) return;
  filling_ = true;
  for (int field = 0; field < Fields; ++field) {
    const auto column = static_cast<std::size_t>(field) + 1;
    XCBasicString common = nodes().cell(selected.front(), column);
    for (const std::size_t row : selected)
      if (nodes().cell(row, column) != common) common.Empty();
    SetDlgItemText(Id::FirstField + field, common);
  }
  filling_ = false;
}

void Dialog::onChange(int editId) {
  if (filling_) return;
  for (const std::size_t row : nodes().selection())
    nodes().element(row)->setAttribute(attribute(editId - Id::FirstField), GetDlgItemText(editId));
  nodes().cellsChanged();
}

}  // namespace program_dialog
