#pragma once

#include <string_view>

#include "automation/command.h"
#include "host/dialogs/base_dlg.h"

namespace automation {

class Session;

/// What a command's word does. A word that can't be done throws a Refusal.
using Word = void (*)(Session& session, const Command& command);

/// The words for the window in front; null when there is none of this name.
Word findWindowWord(std::string_view name);
/// The words for what the page in front edits; null when there is none of this name.
Word findPageWord(std::string_view name);
/// The words "editor.*", which work whatever is in front.
Word findEditorWord(std::string_view name);

/// The control that a command's "id" names in a dialog; a Refusal when there is none.
host::Control& controlOf(const XCBaseDlg& dialog, const Command& command);

/// Executes a command; a Refusal for a word that nobody knows.
void executeWord(Session& session, const Command& command);

}  // namespace automation
