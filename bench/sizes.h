#pragma once

namespace bench {

/// Lamps of one controller: a street, a town, and more than any has.
inline constexpr long Sizes[] = {1000, 10000, 100000};

}  // namespace bench
