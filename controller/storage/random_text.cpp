#include "controller/storage/random_text.h"

#include <cstdio>
#include <random>

namespace lamp::controller {

std::string randomHex(std::size_t words) {
  std::random_device source;
  std::string text;
  char part[16];
  for (std::size_t i = 0; i < words; ++i) {
    std::snprintf(part, sizeof part, "%08x", source());
    text += part;
  }
  return text;
}

}  // namespace lamp::controller
