#pragma once

namespace bench {

/// Lamps of one controller: a street, a town, and more than any has.
inline constexpr long Sizes[] = {1000, 10000, 100000};
/// Where no controller is, to show what grows faster than the rows.
inline constexpr long FarTooMany = 400000;

}  // namespace bench
