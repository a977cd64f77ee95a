#pragma once

// Marks what the plug-in exports: its entry and the classes that the host constructs by name.
#define ZEL_EXPORT __attribute__((visibility("default")))
