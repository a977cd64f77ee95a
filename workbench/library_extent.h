#pragma once

#include <string>

namespace workbench {

/// Whether a file that says that it is a library of this machine is as long as its headers say. The
/// system's loader maps what the headers name without asking: of a file that was cut off, as by a
/// full disk, the program would end by a bus error. True also for what is no library, which the
/// loader refuses by itself. False with the reason in @p cause. @p descriptor is open for reading.
bool isWholeLibrary(int descriptor, std::string& cause);

}  // namespace workbench
