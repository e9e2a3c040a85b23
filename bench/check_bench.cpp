// The cost of a check before the conversion.
#include <string>
#include <utility>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/measure.h"
#include "check/check.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"

namespace zorl2_bench {

namespace {

namespace pb = zorl2::protobuf;

ShutStateInfoSyncSignal ShutSignal() {
  ShutStateInfoSyncSignal signal;
  signal.protocol = STP;
  for (const auto& state : ShutStates(1000, Order::kSorted)) signal.shutStates.insert(state);
  return signal;
}

BlockStateInfoSyncSignal BlockSignal() {
  BlockStateInfoSyncSignal signal;
  signal.protocol = STP;
  for (const auto& state : BlockStates(1000, Order::kSorted)) signal.blockStates.insert(state);
  return signal;
}

template <typename Converter, typename Message, typename Record>
Message MessageOf(const Record& record) {
  Message message;
  Converter().Convert(record, message);
  return message;
}

// Measures a check with the conversion, and the conversion alone: into a new record each time, and
// into a used one.
template <typename Converter, typename Message, typename Record>
void Register(const std::string& name, Record (*make)()) {
  for (const bool filled : {false, true}) {
    for (const bool checked : {false, true}) {
      Measure(name + "/checked/" + (filled ? "filled" : "empty") +
                  (checked ? "/convert" : "/unchecked"),
              [=] {
                return [=, converter = Converter(), message = MessageOf<Converter, Message>(make()),
                        reused = make()]() mutable {
                  if (checked && !zorl2::check::Check(message).rule.empty()) return;
                  if (filled) {
                    converter.Convert(message, reused);
                    Keep(reused);
                  } else {
                    Record record;
                    converter.Convert(message, record);
                    Keep(record);
                  }
                };
              });
    }
  }
}

}  // namespace

void RegisterCheckCases() {
  Register<ZORIDConverter, pb::Zorid>(
      "identifier", +[] { return Identifier(0x01020304); });
  Register<IntfEntryConverter, pb::IntfEntry>(
      "entry", +[] { return Entry(1); });
  Register<ShutStateConverter, pb::ShutStateSync>("shut1000", &ShutSignal);
  Register<BlockStateConverter, pb::BlockStateSync>("block1000", &BlockSignal);
  Register<ZORL2InfoClientConfigConverter, pb::InformationClient>(
      "registration", +[] { return Registration(1); });
  Register<LagMemberConverter, pb::LagMemberOperationProto>(
      "operation", +[] { return Operation(1); });
}

}  // namespace zorl2_bench
