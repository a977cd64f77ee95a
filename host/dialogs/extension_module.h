#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs/page_description.h"
#include "host/export.h"
#include "host/ui/control_spec.h"
#include "host/xml/xml_document.h"

class CWnd;
class XCBaseDlg;

namespace host {

/// A dialog class that the host constructs by name over a device's element and the configuration.
struct DeviceDialogClass {
  std::string name;
  std::function<std::unique_ptr<XCBaseDlg>(CWnd* parent, XmlDocument::XmlNode* device,
                                           XmlDocument::XmlNode* configuration)>
      create;
};

/// A template, ready or made when it is first asked for. A module registers while it is loaded,
/// when its tables may not be initialised yet: it gives the functions that make its templates.
class HOST_API TemplateSource {
 public:
  TemplateSource(DialogTemplate ready) : number_(ready.number), made_(std::move(ready)) {}
  TemplateSource(int number, DialogTemplate (*make)()) : number_(number), make_(make) {}

  int number() const { return number_; }
  const DialogTemplate& get() const;

 private:
  int number_;
  DialogTemplate (*make_)() = nullptr;
  mutable std::optional<DialogTemplate> made_;
};

/// What a loaded module adds to the dialog framework: templates, and classes found by name. A
/// module keeps one with static lifetime and registers it when it is loaded.
struct ExtensionModule {
  std::string name;
  std::vector<TemplateSource> templates;
  std::vector<DeviceDialogClass> deviceDialogs;
  /// What its pages edit, as functions for the reason that TemplateSource gives.
  std::vector<const PageDescription& (*)()> pages = {};
};

/// Puts a module's templates and classes at the framework's disposal. It must stay until removed.
HOST_API void registerModule(const ExtensionModule& module);
/// Takes them away again. No dialog of the module may be open.
HOST_API void unregisterModule(const ExtensionModule& module);

/// The template with a number among the registered modules and the host's own; null when there is
/// none.
HOST_API const DialogTemplate* findTemplate(int number);

/// The device dialog class with a name; null when no registered module has it.
HOST_API const DeviceDialogClass* findDeviceDialog(std::string_view name);

/// What the page edits that sends a section; null when no registered module has it.
HOST_API const PageDescription* findPage(XmlName writeSection);

/// The names of the registered modules.
HOST_API std::vector<std::string> registeredModules();

}  // namespace host
