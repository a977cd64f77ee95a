#include "host/dialogs/extension_module.h"

#include <algorithm>

#include "host/dialogs/host_templates.h"

namespace host {
namespace {

std::vector<const ExtensionModule*>& modules() {
  static std::vector<const ExtensionModule*> registered;
  return registered;
}

}  // namespace

const DialogTemplate& TemplateSource::get() const {
  if (!made_) made_ = make_();
  return *made_;
}

void registerModule(const ExtensionModule& module) {
  modules().push_back(&module);
}

void unregisterModule(const ExtensionModule& module) {
  std::erase(modules(), &module);
}

const DialogTemplate* findTemplate(int number) {
  for (const ExtensionModule* module : modules())
    for (const TemplateSource& source : module->templates)
      if (source.number() == number) return &source.get();
  for (const DialogTemplate& own : hostTemplates())
    if (own.number == number) return &own;
  return nullptr;
}

const DeviceDialogClass* findDeviceDialog(std::string_view name) {
  for (const ExtensionModule* module : modules())
    for (const DeviceDialogClass& entry : module->deviceDialogs)
      if (entry.name == name) return &entry;
  return nullptr;
}

const PageDescription* findPage(XmlName writeSection) {
  for (const ExtensionModule* module : modules())
    for (const auto page : module->pages)
      if (page().writeSection == writeSection) return &page();
  return nullptr;
}

std::vector<std::string> registeredModules() {
  std::vector<std::string> names;
  for (const ExtensionModule* module : modules()) names.push_back(module->name);
  return names;
}

}  // namespace host
