#include "tools/model/loss_totals.h"

#include "tools/model/field_text.h"

namespace zorl2_inspect {
namespace {

using zorl2::check::Loss;
using zorl2::check::LossKind;

// Bounds the memory: every number of an unknown field is a path of its own.
constexpr std::size_t kMostPaths = 200;

}  // namespace

void LossTotals::Add(std::uint64_t record, const std::vector<Loss>& losses) {
  for (const Loss& loss : losses) {
    if (loss.kind == LossKind::kDefaulted) {
      ++defaults_;
      continue;
    }
    const auto key = std::pair(loss.kind, WithoutIndices(loss.field));
    const auto found = totals_.find(key);
    if (found != totals_.end()) {
      ++found->second.count;
    } else if (totals_.size() < kMostPaths) {
      totals_.emplace(key, Total{1, record, loss});
    } else {
      ++others_;
    }
  }
}

std::vector<LossTotals::Total> LossTotals::Severe() const {
  std::vector<Total> totals;
  for (const auto& [key, total] : totals_) {
    totals.push_back(total);
    totals.back().first.field = key.second;
  }
  return totals;
}

}  // namespace zorl2_inspect
