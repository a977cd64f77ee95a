#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lamp::controller::test {

/// A ustar archive of these members (name, bytes), ended by two empty blocks.
std::string makeTar(const std::vector<std::pair<std::string, std::string>>& members);

/// Base64 with padding.
std::string encodeBase64(const std::string& bytes);

}  // namespace lamp::controller::test
