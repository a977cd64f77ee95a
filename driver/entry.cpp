#include "driver/entry.h"

#include <algorithm>
#include <memory>

#include "driver/options_dialog.h"
#include "exchange/export.h"
#include "host/dialogs/guard.h"
#include "host/services/drivers.h"
#include "host/services/services.h"

namespace {

constexpr std::size_t FlagForBoards = 2;
constexpr std::size_t FlagForInputs = 4;

XCDriverDevice* deviceOf(XCDriver* driver) {
  return dynamic_cast<XCDriverDevice*>(driver);
}

bool configure(CWnd* parent, XCDriver* driver) {
  return host::guarded(parent, false, [&] {
    CDlgOptionsZelLampManager dialog(parent, deviceOf(driver));
    return dialog.DoModal() == IDOK;
  });
}

bool refuseList(CWnd* parent) {
  return host::guarded(parent, false, [&] {
    const host::FrontEndLoop loop;
    host::services().frontEnd().ask({parent, XCLoadString(host::TextId::NotAvailableForDeviceType),
                                     host::MessageButtons::ok, host::MessageIcon::none});
    return false;
  });
}

// Offers the controller's board once: a list that names it already comes back empty.
bool listCallbackA(CWnd* parent, XCDriver* driver, XCNameList& names, const XCListFlags& flags, int,
                   XCBasicString) {
  if (!flags.test(FlagForBoards) && !flags.test(FlagForInputs)) return refuseList(parent);
  return host::guarded(parent, false, [&] {
    XCNameList offered = {XCBasicString::Format(u"%s.IOBOARD", driver->Name())};
    if (std::find(names.begin(), names.end(), offered.front()) != names.end()) offered.clear();
    names.swap(offered);
    return true;
  });
}

bool listCallbackB(CWnd* parent, XCDriver*, XCNameList&, const XCListFlags&, int, XCBasicString) {
  return refuseList(parent);
}

XCDlgOptions* createOptionsDialog(CWnd* parent, XCDriver* driver) {
  return host::guarded(parent, static_cast<XCDlgOptions*>(nullptr), [&]() -> XCDlgOptions* {
    auto dialog = std::make_unique<CDlgOptionsZelLampManager>(parent, deviceOf(driver));
    dialog->SetChild();
    dialog->SetBackgroundColor(GetSysColor(COLOR_WINDOW));
    return dialog->Create(parent) ? dialog.release() : nullptr;
  });
}

}  // namespace

void lamp::withdrawEntry() {
  host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass(), configure);
}

/// Registers the lamp manager with the host. False when the host refuses the device class, or the
/// plug-in could not register its dialogs when it was loaded.
extern "C" ZEL_EXPORT bool InitializeUsrDriver_ZelLampManager() {
  if (!lamp::moduleIsRegistered()) return false;
  return host::guarded(nullptr, false, [] {
    const host::DriverClass& deviceClass = XCDriverDeviceZelLampManager::GetThisClass();
    if (!XCDriverServices::Add(deviceClass, configure, listCallbackA, listCallbackB)) return false;
    XCDriverServices::AddCreateChildOptionsDlg(deviceClass, createOptionsDialog);
    return true;
  });
}
