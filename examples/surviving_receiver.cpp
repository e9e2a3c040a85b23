// A receiver that survives every message.
//
// A malformed identifier in a state signal would terminate the process, and an unlisted value would
// throw. The receiver asks zorl2::check first, logs the field and the reason, and converts the
// rest: every entry of a list that converts.
#include <cstdio>
#include <string>

#include "check/check.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "native/intf_entry_builder.h"

namespace pb = zorl2::protobuf;
namespace check = zorl2::check;

// Counts the rejected messages.
struct Log {
  int rejected = 0;
  int lost = 0;
};

// Returns false for a message that does not convert, and logs the reason.
template <typename Converter, typename Message, typename Record>
static bool Apply(const char* name, const Message& message, Record& record, Log& log) {
  const check::Verdict verdict = check::Check(message);
  if (verdict.outcome != check::Outcome::kConverts) {
    ++log.rejected;
    // A program can compare the rule; the other texts are for people.
    std::printf("%s: %s: %s [%s]\n", name, verdict.field.c_str(), verdict.reason.c_str(),
                std::string(verdict.rule).c_str());
    return false;
  }
  for (const check::Loss& loss : check::FindLosses(message)) {
    ++log.lost;
    std::printf("%s: %s: %s becomes %s\n", name, loss.field.c_str(),
                loss.before.empty() ? "nothing" : loss.before.c_str(),
                loss.after.empty() ? "nothing" : loss.after.c_str());
  }
  return Converter().Convert(message, record);
}

static void ReceiveShutState(const std::string& bytes, ShutStateInfoSyncSignal& states, Log& log) {
  // Accepts a message without its required fields, so that the check can name them.
  pb::ShutStateSync message;
  if (!message.ParsePartialFromString(bytes)) {
    ++log.rejected;
    std::printf("shutdown signal: these bytes are no message\n");
    return;
  }
  Apply<ShutStateConverter>("shutdown signal", message, states, log);
}

static int ReceiveEntries(const std::string& bytes, Log& log) {
  pb::IntfEntryList list;
  if (!list.ParsePartialFromString(bytes)) return 0;
  int converted = 0;
  for (const pb::IntfEntry& message : list.intfentry()) {
    IntfEntry entry;
    if (Apply<IntfEntryConverter>("entry", message, entry, log)) ++converted;
  }
  return converted;
}

// The peer's messages.

static std::string SignalBytes(int values, std::uint32_t value) {
  pb::ShutStateSync message;
  message.set_shutprotocol(pb::LACP);
  pb::ShutStateInfo& intf = *message.add_intfs();
  for (int i = 0; i < values; ++i) intf.mutable_zorid()->add_value(value);
  intf.set_state(true);
  return message.SerializeAsString();
}

static std::string ListBytes() {
  pb::IntfEntryList list;
  const IntfEntry entry = IntfEntryBuilder().addZorId(zorid_t{{10, 0, 0, 1}}).Build();
  for (int i = 0; i < 3; ++i) IntfEntryConverter().Convert(entry, *list.add_intfentry());
  list.mutable_intfentry(0)->mutable_generalinfo()->set_bridge_port_number(70000);
  list.mutable_intfentry(1)->mutable_typeinfo()->clear_interfacetype();
  // This version does not list the type, so the parser leaves the field absent.
  list.mutable_intfentry(1)->mutable_typeinfo()->mutable_unknown_fields()->AddVarint(1, 17);
  return list.SerializePartialAsString();
}

int main() {
  Log log;
  ShutStateInfoSyncSignal states;
  ReceiveShutState("\xff", states, log);
  ReceiveShutState(SignalBytes(3, 10), states, log);
  ReceiveShutState(SignalBytes(4, 10), states, log);
  const int entries = ReceiveEntries(ListBytes(), log);
  std::printf("converted: %zu state, %d of 3 entries\n", states.shutStates.size(), entries);
  return states.shutStates.size() == 1 && entries == 2 && log.rejected == 3 && log.lost == 1 ? 0
                                                                                             : 1;
}
