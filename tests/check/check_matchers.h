// Matchers and literals for verdicts and losses.
#pragma once

#include <gmock/gmock.h>

#include <ostream>
#include <string>
#include <vector>

#include "check/check.h"
#include "tests/support/message_matchers.h"

namespace zorl2::check {

inline bool operator==(const Verdict& a, const Verdict& b) {
  return a.outcome == b.outcome && a.rule == b.rule && a.field == b.field && a.reason == b.reason;
}

inline bool operator==(const Loss& a, const Loss& b) {
  return a.kind == b.kind && a.field == b.field && a.before == b.before && a.after == b.after;
}

inline void PrintTo(const Verdict& verdict, std::ostream* out) {
  *out << static_cast<int>(verdict.outcome) << " " << verdict.rule << " " << verdict.field << ": "
       << verdict.reason;
}

inline void PrintTo(const Loss& loss, std::ostream* out) {
  *out << static_cast<int>(loss.kind) << " " << loss.field << ": " << loss.before << " -> "
       << loss.after;
}

}  // namespace zorl2::check

namespace zorl2_test {

using Losses = std::vector<zorl2::check::Loss>;

// The verdict on the message that the text describes; a required field may be missing.
template <typename Message>
zorl2::check::Verdict CheckText(const std::string& text) {
  return zorl2::check::Check(FromText<Message>(text));
}

template <typename Message>
Losses LossesOfText(const std::string& text) {
  return zorl2::check::FindLosses(FromText<Message>(text));
}

}  // namespace zorl2_test
