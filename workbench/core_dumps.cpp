#include "workbench/core_dumps.h"

#include <sys/prctl.h>

namespace workbench {

void forbidCoreDumps() {
  // Unlike a limit on the size of dumps, this holds where dumps go to a program, too.
  ::prctl(PR_SET_DUMPABLE, 0);
}

}  // namespace workbench
