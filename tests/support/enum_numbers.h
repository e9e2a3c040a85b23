// Numbers around an enumeration that counts from 0 without a gap.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

namespace zorl2_test {

// Numbers that an enumeration of this many members does not list: both neighbours, numbers that
// equal a member in their low 8 or 16 bits, and both extremes.
inline std::vector<std::int32_t> NumbersOutside(std::int32_t count) {
  return {-1,
          count,
          count + 1,
          127,
          128,
          255,
          256,
          256 + count - 1,
          65535,
          65536,
          65536 + count - 1,
          std::numeric_limits<std::int32_t>::min(),
          std::numeric_limits<std::int32_t>::min() + 1,
          std::numeric_limits<std::int32_t>::max() - 1,
          std::numeric_limits<std::int32_t>::max()};
}

}  // namespace zorl2_test
