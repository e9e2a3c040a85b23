// The findings of zorl2::check as text. No other file of the tool uses the rules of the
// conversions.
#pragma once

#include <google/protobuf/message.h>

#include <string>
#include <vector>

#include "check/check.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

inline bool Converts(const zorl2::check::Verdict& verdict) {
  return verdict.outcome == zorl2::check::Outcome::kConverts;
}

// Whether the verdict is that a required field is missing.
inline bool IsIncomplete(const zorl2::check::Verdict& verdict) {
  return verdict.rule == "required";
}

// The reason and the rule: "3 values (expected 4) [identifier.size]".
std::string RejectionText(const zorl2::check::Verdict& verdict);

// The same with the path of the field.
Problem RejectionOf(const zorl2::check::Verdict& verdict);

// "replaced", "narrowed", "unknown field" or "defaulted".
const char* LossKindName(zorl2::check::LossKind kind);

// The values of a loss; "(absent)" before a default and "(dropped)" after a value that nothing
// replaces.
std::string BeforeText(const zorl2::check::Loss& loss);
std::string AfterText(const zorl2::check::Loss& loss);

}  // namespace zorl2_inspect
