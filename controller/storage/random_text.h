#pragma once

#include <cstddef>
#include <string>

namespace lamp::controller {

/// So many times 32 bits from the machine's source of chance, in hexadecimal.
std::string randomHex(std::size_t words);

}  // namespace lamp::controller
