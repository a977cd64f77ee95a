#include "workbench/group_history.h"

#include <utility>

#include "host/resources/texts.h"
#include "host/services/setup.h"

namespace workbench {
namespace {

const host::XmlName Id("id");

}  // namespace

// A state without a root stands for no groups element at all.
bool GroupHistory::stands(const LampGroups& groups, const XmlDocument& state) {
  const XmlDocument::XmlNode* container = groups.container();
  if (container == nullptr || state.Root() == nullptr) return container == state.Root();
  return *container == *state.Root();
}

GroupHistory::State GroupHistory::stateOf(const LampGroups& groups) const {
  if (!done_.empty() && done_.back().deviceId == groups.device().Value(Id) &&
      stands(groups, *done_.back().after))
    return done_.back().after;
  auto state = std::make_shared<XmlDocument>();
  if (const XmlDocument::XmlNode* container = groups.container())
    state->Create(container->TagName()) = *container;
  return state;
}

void GroupHistory::note(const LampGroups& groups, State before, host::TextId what,
                        XCBasicString group) {
  done_.push_back(
      {groups.device().Value(Id), what, std::move(group), std::move(before), stateOf(groups)});
  if (done_.size() > MostChanges) done_.erase(done_.begin());
  undone_.clear();
}

std::optional<XCBasicString> GroupHistory::textOf(const Changes& changes) {
  if (changes.empty()) return std::nullopt;
  return XCBasicString::Format(XCLoadString(changes.back().what), changes.back().group);
}

bool GroupHistory::move(Changes& from, Changes& to, State Change::*now, State Change::*wanted) {
  if (from.empty()) return false;
  Change change = std::move(from.back());
  from.pop_back();
  const XmlDocument::XmlNode* device = XCMainCfg::Get().DeviceNode(change.deviceId);
  if (device == nullptr) return false;
  LampGroups groups(*device);
  if (!stands(groups, *(change.*now))) return false;
  groups.replaceAll((change.*wanted)->Root());
  to.push_back(std::move(change));
  return true;
}

}  // namespace workbench
