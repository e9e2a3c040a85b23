// What the conversions of a stream lose, in memory that does not grow with the stream.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "check/check.h"

namespace zorl2_inspect {

class LossTotals {
 public:
  struct Total {
    std::uint64_t count = 0;
    std::uint64_t first_record = 0;
    zorl2::check::Loss first;
  };

  void Add(std::uint64_t record, const std::vector<zorl2::check::Loss>& losses);

  // One total for each kind and each path without indices, the most serious kind first, without
  // defaults.
  std::vector<Total> Severe() const;
  // How many losses belong to paths beyond the limit, which are counted together.
  std::uint64_t others() const { return others_; }
  // How many absent fields get their default.
  std::uint64_t defaults() const { return defaults_; }

 private:
  std::map<std::pair<zorl2::check::LossKind, std::string>, Total> totals_;
  std::uint64_t others_ = 0;
  std::uint64_t defaults_ = 0;
};

}  // namespace zorl2_inspect
