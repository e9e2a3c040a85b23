// Checks damaged messages with the installed package: which field is wrong, and what would be lost.
#include <cstdio>
#include <string>

#include "check/check.h"

namespace pb = zorl2::protobuf;
using zorl2::check::Check;
using zorl2::check::FindLosses;
using zorl2::check::Outcome;

static bool Fail(const char* what) {
  std::printf("FAILED: %s\n", what);
  return false;
}

static bool Run() {
  // STP; one interface, with an identifier of three values and without a state.
  pb::ShutStateSync signal;
  if (!signal.ParsePartialFromString({8, 4, 0x12, 7, 0x0a, 5, 0x0a, 3, 1, 2, 3}) ||
      Check(signal).field != "intfs[0].state") {
    return Fail("the missing state");
  }
  signal.mutable_intfs(0)->set_state(true);
  const zorl2::check::Verdict verdict = Check(signal);
  if (verdict.outcome != Outcome::kEndsProcess || verdict.rule != "identifier.size" ||
      verdict.field != "intfs[0].zorid" || verdict.reason != "3 values (expected 4)") {
    return Fail("the malformed identifier");
  }
  signal.mutable_intfs(0)->mutable_zorid()->add_value(300);
  const google::protobuf::Message& any = signal;
  if (!Check(any).rule.empty()) return Fail("a signal that converts");
  const auto losses = FindLosses(any);
  if (losses.size() != 1 || losses[0].before != "1.2.3.300" || losses[0].after != "1.2.3.44") {
    return Fail("the narrowed identifier");
  }
  BlockStateInfoSyncSignal record;
  record.protocol = L2_PROTO;
  if (Check(record).rule != "protocol.unlisted") return Fail("the protocol");
  std::printf("proved: %s is named: %s\n", verdict.field.c_str(), verdict.reason.c_str());
  return true;
}

int main() { return Run() ? 0 : 1; }
