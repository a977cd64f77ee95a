#pragma once

namespace workbench {

/// From now on nothing is left of this process's memory when it ends by a fault, nor may another
/// program of the same person look into it: it holds passwords.
void forbidCoreDumps();

}  // namespace workbench
