#include "fuzz/fault.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void fault(const std::string& what) {
  std::fprintf(stderr, "FAULT: %s\n", what.c_str());
  std::abort();
}

}  // namespace fuzz
