// A configuration of any content: opened or refused, looked through, its groups of lamps changed,
// saved, and opened again as it was.

#include <string>
#include <vector>

#include "fuzz/dialogs/made_up_host.h"
#include "fuzz/dialogs/scratch_folder.h"
#include "fuzz/fault.h"
#include "host/services/setup.h"
#include "workbench/configuration_store.h"
#include "workbench/device_catalogue.h"
#include "workbench/group_history.h"
#include "workbench/lamp_groups.h"

namespace {

using fuzz::expect;
using workbench::ConfigurationStore;
using workbench::LampGroups;
using Node = XmlDocument::XmlNode;

constexpr int MostChanges = 20;

void lookThrough(workbench::DeviceCatalogue& catalogue) {
  for (Node* device : workbench::DeviceCatalogue::devices()) {
    const XCBasicString id = device->Value("id");
    XCDriver* driver = catalogue.find(id);
    expect(driver != nullptr || id.IsEmpty(), "a device is found by its id");
    expect(catalogue.find(id) == driver, "a driver is found again");
    const XCBasicString name = device->Value("name");
    expect(workbench::DeviceCatalogue::deviceNamed(name) != nullptr,
           "a device is found by its name");
    for (const Node* lamp : LampGroups(*device).lamps()) catalogue.find(lamp->Value("id"));
  }
}

workbench::GroupContent chosenContent(fuzz::Input& input, const LampGroups& groups) {
  workbench::GroupContent content;
  content.name = XCBasicString::FromUtf8(input.text(8));
  const std::vector<Node*> lamps = groups.lamps();
  for (std::size_t i = input.below(4); i > 0 && !lamps.empty(); --i)
    content.lamps.push_back(lamps[input.below(lamps.size())]->Value("id"));
  return content;
}

void changeGroups(fuzz::Input& input, Node& device, workbench::GroupHistory& history) {
  LampGroups groups(device);
  const std::vector<Node*> all = groups.all();
  if (device.Value("name").IsEmpty()) return expect(all.empty(), "without a name, no groups");
  const workbench::GroupContent content = chosenContent(input, groups);
  const auto before = history.stateOf(groups);
  Node* group = all.empty() ? nullptr : all[input.below(all.size())];
  if (group == nullptr || input.flag()) {
    Node& added = groups.add(content);
    expect(groups.has(added), "a group that was added is one of them");
    expect(LampGroups::contentOf(added) == content, "it holds what was asked for");
  } else if (input.flag()) {
    LampGroups::change(*group, content);
    expect(LampGroups::contentOf(*group) == content, "a changed group holds what was asked for");
  } else {
    expect(groups.remove(*group), "a group can be removed");
    expect(!groups.has(*group), "it is gone then");
  }
  groups.nameFault(content.name, nullptr);
  history.note(groups, before, host::TextId::None, content.name);
}

void change(fuzz::Input& input) {
  workbench::GroupHistory history;
  for (int changes = 0; changes < MostChanges && !input.empty(); ++changes) {
    const std::vector<Node*> devices = workbench::DeviceCatalogue::devices();
    if (devices.empty()) return;
    Node& device = *devices[input.below(devices.size())];
    const std::string before = XCMainCfg::Get().Document().ToString();
    switch (input.below(5)) {
      case 0:
        if (history.undo()) expect(history.redo() && history.undo(), "undone, done, undone again");
        break;
      case 1: {
        const XCBasicString name = device.Value("name");
        device.SetValue("name", XCBasicString::FromUtf8(input.text(8)));
        LampGroups(device).followRename(name);
        break;
      }
      default: {
        const bool couldRedo = history.redoable().has_value();
        changeGroups(input, device, history);
        if (!couldRedo && input.flag() && history.undo())
          expect(history.redoable().has_value(), "what was undone can be done again");
      }
    }
  }
}

void saveAndOpenAgain(ConfigurationStore& store, const std::filesystem::path& folder) {
  std::string cause;
  if (!store.saveIfDifferent(cause)) fuzz::fault("the configuration is not saved: " + cause);
  if (store.isRecovered()) return;  // the version before, unchanged, is not written
  const std::string saved = store.text();
  ConfigurationStore again(folder, std::chrono::milliseconds(0));
  if (!again.open(cause)) fuzz::fault("what was saved is refused: " + cause);
  expect(again.text() == saved, "what was saved opens as it was");
  expect(again.isReadOnly(), "a second one only reads");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  fuzz::MadeUpHost host(input, fuzz::scratchFolder());
  const std::filesystem::path file = fuzz::scratchFolder() / "configuration.xml";
  host.files().put(file, host.controller().text(0));
  host.files().put(host::keptCopy(file), host.controller().text(1));
  XCMainCfg::Get().Document().Create("before");

  ConfigurationStore store(fuzz::scratchFolder(), std::chrono::milliseconds(0));
  std::string cause;
  if (!store.open(cause)) {
    expect(!cause.empty(), "a refusal has a cause");
    expect(XCMainCfg::Get().Root()->Tag() == "before", "a refused file leaves what was open");
    const bool opens = store.keptCopyOpens();
    expect(store.openKeptCopy(cause) == opens, "the version before opens when it can");
    expect(*host.files().content(file) == host.controller().text(0), "a refused file stays");
    if (!opens) return 0;
    expect(store.isRecovered(), "what is open is the version before");
  }
  expect(!store.isReadOnly(), "the first one may write");
  workbench::DeviceCatalogue catalogue;
  lookThrough(catalogue);
  change(input);
  lookThrough(catalogue);
  saveAndOpenAgain(store, fuzz::scratchFolder());
  return 0;
}
