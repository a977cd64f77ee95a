#pragma once

namespace lamp {

/// Takes back what the plug-in's entry registered with the host, before the plug-in is unloaded.
void withdrawEntry();

}  // namespace lamp
