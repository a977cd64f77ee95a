#pragma once

namespace support {

/// Puts services in force for the time between two tests: dialogs may still be destroyed, and
/// everything else fails the test that tries it.
void installNoServices();

}  // namespace support
