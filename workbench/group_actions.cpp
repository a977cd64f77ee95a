#include "workbench/group_actions.h"

#include <algorithm>
#include <unordered_set>

#include "host/services/drivers.h"
#include "workbench/device_catalogue.h"
#include "workbench/lamp_group_dialog.h"

namespace workbench {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;
using Ids = std::unordered_set<std::u16string>;

Ids setOf(const std::vector<XCBasicString>& lamps) {
  Ids ids;
  for (const XCBasicString& lamp : lamps) ids.insert(lamp.str());
  return ids;
}

}  // namespace

GroupActions::GroupActions(ConfigurationStore& store) : store_(store) {
  dialogs_.name = "groups of lamps";
  dialogs_.templates = {{LampGroupDialog::TemplateNumber, &LampGroupDialog::Template}};
  host::registerModule(dialogs_);
}

GroupActions::~GroupActions() {
  host::unregisterModule(dialogs_);
}

ActionResult GroupActions::canChange(const Node& device) const {
  if (!(device.Value("driver") == XCDriverDeviceZelLampManager::GetThisClass().type))
    return ActionResult::refused(TextId::NoLampManager, device.Value("name"));
  // Groups of lamps are found by the name of their controller.
  if (device.Value("name").IsEmpty()) return ActionResult::refused(TextId::NameEmpty);
  return ActionResult::ifWritable(store_);
}

// A dialog may have been open for long: a scripted user works on the configuration meanwhile.
ActionResult GroupActions::canChange(const Node& device, const Node& group) const {
  const auto devices = DeviceCatalogue::devices();
  if (std::find(devices.begin(), devices.end(), &device) == devices.end())
    return ActionResult::refused(TextId::DeviceGone, device.Value("name"));
  if (!LampGroups(device).has(group))
    return ActionResult::refused(TextId::GroupGone, group.Value("id"));
  return canChange(device);
}

ActionResult GroupActions::newGroup(CWnd* parent, const Node& device,
                                    std::vector<XCBasicString> lamps) {
  if (ActionResult result = canChange(device); !result.done) return result;
  LampGroups groups(device);  // keeps the device, which may be removed while the dialog is open
  LampGroupDialog dialog(parent, groups, nullptr, {{}, std::move(lamps)});
  if (dialog.DoModal() != IDOK) return {};
  const auto devices = DeviceCatalogue::devices();
  if (std::find(devices.begin(), devices.end(), &device) == devices.end())
    return ActionResult::refused(TextId::DeviceGone, device.Value("name"));
  GroupHistory::State before = history_.stateOf(groups);
  groups.add(dialog.content());
  history_.note(groups, std::move(before), TextId::StepNewGroup, dialog.content().name);
  saveOrTell(store_, parent);
  return {};
}

ActionResult GroupActions::modifyGroup(CWnd* parent, const Node& device, Node& group) {
  if (ActionResult result = canChange(device, group); !result.done) return result;
  const host::ConstXmlAnchor kept[] = {&device, &group};  // as long as the dialog is open
  LampGroupDialog dialog(parent, LampGroups(device), &group, LampGroups::contentOf(group));
  if (dialog.DoModal() != IDOK) return {};
  return apply(parent, device, group, dialog.content());
}

ActionResult GroupActions::removeGroup(CWnd* parent, const Node& device, Node& group) {
  if (ActionResult result = canChange(device, group); !result.done) return result;
  LampGroups groups(device);
  GroupHistory::State before = history_.stateOf(groups);
  const XCBasicString name = group.Value("id");
  groups.remove(group);
  history_.note(groups, std::move(before), TextId::StepRemoveGroup, name);
  saveOrTell(store_, parent);
  return {};
}

ActionResult GroupActions::apply(CWnd* parent, const Node& device, Node& group,
                                 const GroupContent& content) {
  if (ActionResult result = canChange(device, group); !result.done) return result;
  if (LampGroups::contentOf(group) == content) return {};
  LampGroups groups(device);
  GroupHistory::State before = history_.stateOf(groups);
  LampGroups::change(group, content);
  history_.note(groups, std::move(before), TextId::StepChangeGroup, content.name);
  saveOrTell(store_, parent);
  return {};
}

ActionResult GroupActions::addLamps(CWnd* parent, const Node& device, Node& group,
                                    const std::vector<XCBasicString>& lamps) {
  GroupContent content = LampGroups::contentOf(group);
  Ids present = setOf(content.lamps);
  for (const XCBasicString& lamp : lamps)
    if (present.insert(lamp.str()).second) content.lamps.push_back(lamp);
  return apply(parent, device, group, content);
}

ActionResult GroupActions::takeOutLamps(CWnd* parent, const Node& device, Node& group,
                                        const std::vector<XCBasicString>& lamps) {
  GroupContent content = LampGroups::contentOf(group);
  const Ids gone = setOf(lamps);
  std::erase_if(content.lamps,
                [&gone](const XCBasicString& lamp) { return gone.contains(lamp.str()); });
  return apply(parent, device, group, content);
}

ActionResult GroupActions::canUndo() const {
  if (!history_.undoable()) return ActionResult::refused(TextId::NothingToUndo);
  return ActionResult::ifWritable(store_);
}

ActionResult GroupActions::canRedo() const {
  if (!history_.redoable()) return ActionResult::refused(TextId::NothingToRedo);
  return ActionResult::ifWritable(store_);
}

ActionResult GroupActions::undo(CWnd* parent) {
  const ActionResult result = canUndo();
  return result.done ? moved(parent, history_.undo()) : result;
}

ActionResult GroupActions::redo(CWnd* parent) {
  const ActionResult result = canRedo();
  return result.done ? moved(parent, history_.redo()) : result;
}

ActionResult GroupActions::moved(CWnd* parent, bool done) {
  if (!done) return ActionResult::refused(TextId::UndoNotPossible);
  saveOrTell(store_, parent);
  return {};
}

}  // namespace workbench
