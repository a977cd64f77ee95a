#pragma once

// Marks what the host library offers to plug-ins and programs; everything else stays hidden.
#define HOST_API __attribute__((visibility("default")))
