#pragma once

#include <string>

namespace fuzz {

/// Says what does not hold and ends the program, so that the fuzzer keeps the input.
[[noreturn]] void fault(const std::string& what);

/// Ends the program with @p what where @p holds is false.
inline void expect(bool holds, const char* what) {
  if (!holds) fault(what);
}

}  // namespace fuzz
