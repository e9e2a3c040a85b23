#include "tools/text/nearest.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <limits>
#include <numeric>

namespace zorl2_inspect {
namespace {

char Lower(char character) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

// How many characters must be inserted, removed or replaced. An insertion counts half, because
// people shorten names more often than they confuse letters.
std::size_t Distance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = 2 * (i + 1);
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t replaced = diagonal + (Lower(from[i]) == Lower(to[j]) ? 0 : 2);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 2});
    }
  }
  return row.back();
}

}  // namespace

std::string Nearest(std::string_view written, const std::vector<std::string>& names) {
  // Bounds the time; so long a name is no typing error.
  written = written.substr(0, 100);
  std::string nearest;
  std::size_t least = std::numeric_limits<std::size_t>::max();
  for (const std::string& name : names) {
    const std::string_view last = std::string_view(name).substr(name.rfind('.') + 1);
    const std::size_t distance = std::min(Distance(written, name), Distance(written, last));
    if (distance >= least) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}

}  // namespace zorl2_inspect
