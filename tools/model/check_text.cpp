#include "tools/model/check_text.h"

#include <fmt/format.h>

#include <string_view>

namespace zorl2_inspect {

using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2::check::Verdict;

std::string RejectionText(const Verdict& verdict) {
  return fmt::format("{} [{}]", verdict.reason, verdict.rule);
}

Problem RejectionOf(const Verdict& verdict) {
  Problem problem;
  problem.path = verdict.field;
  problem.found = verdict.reason;
  problem.rule_name = verdict.rule;
  // Most reasons end with what the converter expects.
  static constexpr std::string_view kExpected = " (expected ";
  const std::size_t begin = problem.found.rfind(kExpected);
  if (begin == std::string::npos || problem.found.back() != ')') return problem;
  problem.expected = problem.found.substr(begin + kExpected.size());
  problem.expected.pop_back();
  problem.found.resize(begin);
  return problem;
}

const char* LossKindName(LossKind kind) {
  switch (kind) {
    case LossKind::kReplaced:
      return "replaced";
    case LossKind::kNarrowed:
      return "narrowed";
    case LossKind::kUnknownField:
      return "unknown field";
    case LossKind::kDefaulted:
      break;
  }
  return "defaulted";
}

std::string BeforeText(const Loss& loss) { return loss.before.empty() ? "(absent)" : loss.before; }

std::string AfterText(const Loss& loss) { return loss.after.empty() ? "(dropped)" : loss.after; }

}  // namespace zorl2_inspect
