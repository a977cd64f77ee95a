#include "bench/peak_memory.h"

#include <malloc.h>

#include <fstream>
#include <string>

namespace bench {
namespace {

// A line of the process's status, in bytes.
std::size_t status(const std::string& key) {
  std::ifstream file("/proc/self/status");
  for (std::string word; file >> word;) {
    std::size_t kibibytes = 0;
    if (word == key && file >> kibibytes) return kibibytes * 1024;
  }
  return 0;
}

}  // namespace

PeakMemory::PeakMemory() {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";
  before_ = status("VmRSS:");
}

std::size_t PeakMemory::growth() const {
  const std::size_t peak = status("VmHWM:");
  return peak > before_ ? peak - before_ : 0;
}

}  // namespace bench
