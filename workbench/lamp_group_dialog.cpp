#include "workbench/lamp_group_dialog.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "host/services/drivers.h"
#include "host/services/identity.h"

namespace workbench {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;
namespace layout = host::layout;

enum Id {
  NameLabel = host::privateId(0),
  Name,
  LampsGroup,
  ReferenceLabel,
  Reference,
  Matching,
  AddMatching,
  OthersLabel,
  Others,
  MoveRight,
  MoveLeft,
  MembersLabel,
  Members,
};

constexpr int MostCharacters = 64;
constexpr int LeastListWidth = 270;

const host::XmlName IdName("id");
const host::XmlName NameName("name");
const host::XmlName DescriptionName("description");
const host::XmlName UnknownName("unknown");

// Of what is no lamp of the controller only the id is known, and what the registry says.
XCBasicString lampName(const Node& lamp) {
  if (lamp.Parent() == nullptr || lamp.Parent()->TagName() != UnknownName)
    return lamp.Value(NameName);
  const XCDriver* driver = XCDriver::LockDriver(lamp.Value(IdName));
  return driver != nullptr ? driver->Name() : XCLoadString(TextId::LampGone);
}

XCBasicString lampReference(const Node& lamp) {
  return lamp.Value(DescriptionName);
}

std::vector<host::ListColumn> columns() {
  host::ListColumn name;
  name.caption = XCLoadString(TextId::NodeColumn);
  name.cell = lampName;
  host::ListColumn reference;
  reference.caption = XCLoadString(TextId::ReferenceColumn);
  reference.share = 2;
  reference.cell = lampReference;
  return {std::move(name), std::move(reference)};
}

}  // namespace

LampGroupDialog::LampGroupDialog(CWnd* parent, const LampGroups& groups, const Node* group,
                                 GroupContent content)
    : XCBaseDlg(TemplateNumber, parent),
      groups_(groups),
      group_(group),
      content_(std::move(content)),
      unknown_(UnknownName) {}

host::DialogTemplate LampGroupDialog::Template() {
  return {TemplateNumber,
          "XCDlgLampGroup",
          "",
          {host::label(Id::NameLabel, "nameLabel", TextId::Name),
           host::edit(Id::Name, "name", MostCharacters),
           host::group(Id::LampsGroup, "lampsGroup", TextId::FillGroup),
           host::label(Id::ReferenceLabel, "referenceLabel", TextId::ReferenceContains),
           host::edit(Id::Reference, "reference"), host::label(Id::Matching, "matching"),
           host::button(Id::AddMatching, "addMatching", TextId::AddMatching, "MOVE-RIGHT-16.png"),
           host::label(Id::OthersLabel, "othersLabel"), host::list(Id::Others, "others"),
           host::button(Id::MoveRight, "moveRight", TextId::None, "MOVE-RIGHT-16.png"),
           host::button(Id::MoveLeft, "moveLeft", TextId::None, "MOVE-LEFT-16.png"),
           host::label(Id::MembersLabel, "membersLabel"), host::list(Id::Members, "members"),
           host::okButton(), host::cancelButton()}};
}

const host::MessageMap* LampGroupDialog::GetMessageMap() const {
  using Dialog = LampGroupDialog;
  static constexpr host::MessageEntry entries[] = {
      host::onChange<&Dialog::OnFilter>(Id::Reference),
      host::onClick<&Dialog::OnAddMatching>(Id::AddMatching),
      host::onClick<&Dialog::OnMoveRight>(Id::MoveRight),
      host::onClick<&Dialog::OnMoveLeft>(Id::MoveLeft),
      host::onDoubleClick<&Dialog::OnMoveRight>(Id::Others),
      host::onDoubleClick<&Dialog::OnMoveLeft>(Id::Members),
      host::onKey<&Dialog::OnMembersKey>(Id::Members),
      host::onSelection<&Dialog::OnSelection>(Id::Others),
      host::onSelection<&Dialog::OnSelection>(Id::Members)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool LampGroupDialog::OnInitDialog() {
  const XCBasicString device = groups_.device().Value(NameName);
  SetWindowText(
      group_ == nullptr
          ? XCBasicString::Format(XCLoadString(TextId::NewGroupTitle), device)
          : XCBasicString::Format(XCLoadString(TextId::ModifyGroupTitle), content_.name, device));
  SetDlgItemText(Id::Name, content_.name);
  for (const int list : {Id::Others, Id::Members}) List(list).setColumns(columns());
  takeContent();
  showOthers();
  showMembers();
  XCBaseDlg::OnInitDialog();
  FocusAndSelectAll(Id::Name);
  return false;
}

void LampGroupDialog::tellHeld(const Note& note) const {
  for (const Lamp& lamp : lamps_) note(lamp.element);
  for (const Node* member : members_) note(member);
}

void LampGroupDialog::takeContent() {
  std::unordered_map<std::u16string, std::size_t> places;
  for (Node* lamp : groups_.lamps()) {
    places.try_emplace(lamp->Value(IdName).str(), lamps_.size());
    lamps_.push_back({lamp, host::foldedText(lampReference(*lamp)), false});
  }
  for (const XCBasicString& id : content_.lamps) {
    const auto found = places.find(id.str());
    if (found == places.end()) {
      Node& unknown = unknown_.Root()->NewChild("device");
      unknown.NewChild(IdName, id);
      members_.push_back(&unknown);
    } else if (!lamps_[found->second].inGroup) {
      lamps_[found->second].inGroup = true;
      members_.push_back(lamps_[found->second].element);
    }
  }
}

void LampGroupDialog::Layout() {
  const auto listed = [](int label, int list) {
    return XCVerticalLayout({layout::control(label), layout::control(list, 1, LeastListWidth)}, 1);
  };
  SetLayout(XCVerticalLayout(
      {layout::labelled(Id::NameLabel, Id::Name),
       layout::box(
           Id::LampsGroup,
           {XCHoritzontalLayout({layout::control(Id::ReferenceLabel),
                                 layout::control(Id::Reference, 1), layout::control(Id::Matching),
                                 layout::control(Id::AddMatching)}),
            XCHoritzontalLayout({listed(Id::OthersLabel, Id::Others),
                                 XCVerticalLayout({layout::gap(50), layout::control(Id::MoveRight),
                                                   layout::stretch(), layout::control(Id::MoveLeft),
                                                   layout::gap(50)}),
                                 listed(Id::MembersLabel, Id::Members)},
                                1)},
           1),
       layout::okCancelRow()}));
}

// The lamps outside of the group whose reference has the filter's text in it, whatever its case.
void LampGroupDialog::showOthers() {
  const std::u32string wanted = host::foldedText(GetDlgItemText(Id::Reference));
  host::ListControl& list = List(Id::Others);
  list.clearRows();
  std::size_t outside = 0;
  for (std::size_t at = 0; at < lamps_.size(); ++at) {
    if (lamps_[at].inGroup) continue;
    ++outside;
    if (lamps_[at].reference.find(wanted) != std::u32string::npos)
      list.addRow({lamps_[at].element, static_cast<std::int64_t>(at)});
  }
  SetDlgItemText(Id::Matching,
                 XCBasicString::Format(XCLoadString(TextId::LampsMatch), list.rowCount(), outside));
  SetDlgItemText(Id::OthersLabel, XCBasicString::Format(XCLoadString(TextId::OtherLamps), outside));
  GetDlgItem(Id::AddMatching).setEnabled(list.rowCount() > 0, XCLoadString(TextId::NoLampMatches));
  OnSelection();
}

void LampGroupDialog::showMembers() {
  host::ListControl& list = List(Id::Members);
  list.clearRows();
  for (Node* member : members_) list.addRow({member});
  SetDlgItemText(Id::MembersLabel,
                 XCBasicString::Format(XCLoadString(TextId::LampsInGroup), members_.size()));
  OnSelection();
}

void LampGroupDialog::OnSelection() {
  const auto allow = [this](int button, int list) {
    GetDlgItem(button).setEnabled(!List(list).selection().empty(),
                                  XCLoadString(TextId::NoLampSelected));
  };
  allow(Id::MoveRight, Id::Others);
  allow(Id::MoveLeft, Id::Members);
}

void LampGroupDialog::OnFilter() {
  showOthers();
}

void LampGroupDialog::take(const std::vector<std::size_t>& rows) {
  const host::ListControl& list = List(Id::Others);
  for (const std::size_t row : rows) {
    Lamp& lamp = lamps_[static_cast<std::size_t>(list.row(row).data)];
    lamp.inGroup = true;
    members_.push_back(lamp.element);
  }
  showOthers();
  showMembers();
}

void LampGroupDialog::OnAddMatching() {
  std::vector<std::size_t> rows(List(Id::Others).rowCount());
  for (std::size_t row = 0; row < rows.size(); ++row) rows[row] = row;
  take(rows);
}

void LampGroupDialog::OnMoveRight() {
  take(List(Id::Others).selection());
}

void LampGroupDialog::OnMoveLeft() {
  const host::ListControl& list = List(Id::Members);
  std::unordered_set<const Node*> gone;
  for (const std::size_t row : list.selection()) gone.insert(list.element(row));
  std::erase_if(members_, [&gone](const Node* member) { return gone.contains(member); });
  for (Lamp& lamp : lamps_)
    if (gone.contains(lamp.element)) lamp.inGroup = false;
  showOthers();
  showMembers();
}

void LampGroupDialog::OnMembersKey(host::Key key) {
  if (key == host::Key::deleteKey) OnMoveLeft();
}

void LampGroupDialog::OnOK() {
  const XCBasicString name = GetDlgItemText(Id::Name);
  if (const auto fault = groups_.nameFault(name, group_)) {
    MessageBox(*fault);
    return FocusAndSelectAll(Id::Name);
  }
  content_ = {name, {}};
  for (const Node* member : members_) content_.lamps.push_back(member->Value(IdName));
  EndDialog(IDOK);
}

}  // namespace workbench
