#pragma once

#include "host/dialogs/wnd.h"
#include "host/resources/texts.h"
#include "workbench/configuration_store.h"

namespace workbench {

/// What became of an action: done, or not possible with a reason for the person, in the language in
/// force.
struct ActionResult {
  bool done = true;
  XCBasicString reason;

  template <class... Arguments>
  static ActionResult refused(host::TextId why, const Arguments&... arguments) {
    return {false, XCBasicString::Format(XCLoadString(why), arguments...)};
  }
  /// Done when @p store may write, else refused with the reason that it gives.
  static ActionResult ifWritable(const ConfigurationStore& store);
};

/// Saves when the configuration differs from what is on disk; a failure is shown in a message in
/// front of @p parent.
void saveOrTell(ConfigurationStore& store, CWnd* parent);

}  // namespace workbench
