#pragma once

#include <stdexcept>

namespace automation {

/// A command that is answered with "ok":false; what() tells the person why.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace automation
