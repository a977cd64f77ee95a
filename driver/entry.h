#pragma once

namespace lamp {

/// Whether the plug-in's dialogs were registered with the host when it was loaded.
bool moduleIsRegistered();

/// Takes back what the plug-in's entry registered with the host, before the plug-in is unloaded.
void withdrawEntry();

}  // namespace lamp
