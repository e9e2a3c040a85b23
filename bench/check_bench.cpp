// zorl2::check: a check followed by the conversion, and a check alone, next to the conversion.
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

// Into a record that is made each time, and into one that is filled already.
template <typename Converter, typename Message, typename Record>
void Register(const std::string& name, Record (*make)()) {
  const auto measure = [make](const std::string& case_name, bool check, bool convert, bool filled) {
    MeasureWithThreads(case_name, [=] {
      return [=, converter = Converter(), message = MessageOf<Converter, Message>(make()),
              reused = make()]() mutable {
        if (check && !zorl2::check::Check(message).rule.empty()) return;
        if (!convert) return;
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
  };
  for (const bool filled : {false, true}) {
    const std::string into = filled ? "filled" : "empty";
    measure(name + "/checked/" + into + "/convert", true, true, filled);
    measure(name + "/checked/" + into + "/unchecked", false, true, filled);
    measure(name + "/check/" + into + "/convert", true, false, filled);
    measure(name + "/check/" + into + "/conversion", false, true, filled);
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
