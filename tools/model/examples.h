// A count with a few of the counted names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zorl2_inspect {

// The memory does not grow with the count.
struct Examples {
  static constexpr std::size_t kMost = 3;

  void Add(std::string name) {
    ++count;
    if (names.size() < kMost) names.push_back(std::move(name));
  }

  std::uint64_t count = 0;
  std::vector<std::string> names;
};

}  // namespace zorl2_inspect
