#include "host/dialogs/extension_module.h"

#include <algorithm>

#include "host/dialogs/host_templates.h"

namespace host {
namespace {

std::vector<const ExtensionModule*>& modules() {
  static std::vector<const ExtensionModule*> registered;
  return registered;
}

const DialogTemplate* findIn(const std::vector<DialogTemplate>& templates, int number) {
  const auto found =
      std::find_if(templates.begin(), templates.end(),
                   [number](const DialogTemplate& entry) { return entry.number == number; });
  return found == templates.end() ? nullptr : &*found;
}

}  // namespace

void registerModule(const ExtensionModule& module) { modules().push_back(&module); }

void unregisterModule(const ExtensionModule& module) { std::erase(modules(), &module); }

const DialogTemplate* findTemplate(int number) {
  for (const ExtensionModule* module : modules())
    if (const DialogTemplate* found = findIn(module->templates, number)) return found;
  return findIn(hostTemplates(), number);
}

const DeviceDialogClass* findDeviceDialog(std::string_view name) {
  for (const ExtensionModule* module : modules())
    for (const DeviceDialogClass& entry : module->deviceDialogs)
      if (entry.name == name) return &entry;
  return nullptr;
}

std::vector<std::string> registeredModules() {
  std::vector<std::string> names;
  for (const ExtensionModule* module : modules()) names.push_back(module->name);
  return names;
}

}  // namespace host
