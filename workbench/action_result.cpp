#include "workbench/action_result.h"

#include "host/services/services.h"

namespace workbench {

ActionResult ActionResult::ifWritable(const ConfigurationStore& store) {
  if (!store.isReadOnly()) return {};
  return {false, XCBasicString::FromUtf8(store.readOnlyReason())};
}

void saveOrTell(ConfigurationStore& store, CWnd* parent) {
  std::string cause;
  if (store.saveIfDifferent(cause)) return;
  host::services().frontEnd().ask(
      {parent, XCBasicString::FromUtf8(cause), host::MessageButtons::ok, host::MessageIcon::error});
}

}  // namespace workbench
