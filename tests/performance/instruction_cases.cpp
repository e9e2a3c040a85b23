// Runs one conversion, or one check, once, warm, inside the function that callgrind measures.
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "bench/fixtures.h"
#include "check/check.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"

using zorl2_bench::Order;
namespace pb = zorl2::protobuf;

namespace {

using Operation = std::function<void()>;

// Both directions of one record, into destinations that are used again, and the search for losses
// in a message that has none.
template <typename Converter, typename Message, typename Native>
void AddPair(std::map<std::string, Operation>& cases, const std::string& name,
             const Native& native) {
  Message filled;
  Converter().Convert(native, filled);
  cases[name + "/to_message"] = [native, message = Message()]() mutable {
    Converter().Convert(native, message);
  };
  cases[name + "/losses"] = [filled] {
    if (!zorl2::check::FindLosses(filled).empty()) std::abort();
  };
  cases[name + "/to_native"] = [filled, record = Native()]() mutable {
    Converter().Convert(filled, record);
  };
}

std::map<std::string, Operation> Cases() {
  std::map<std::string, Operation> cases;
  AddPair<IntfEntryConverter, pb::IntfEntry>(cases, "entry", zorl2_bench::Entry(1));
  AddPair<ZORIDConverter, pb::Zorid>(cases, "identifier", zorl2_bench::Identifier(0x01020304));
  AddPair<ZORL2InfoClientConfigConverter, pb::InformationClient>(cases, "registration",
                                                                 zorl2_bench::Registration(1));
  AddPair<LagMemberConverter, pb::LagMemberOperationProto>(cases, "operation",
                                                           zorl2_bench::Operation(1));

  for (const int count : {10, 1000}) {
    const std::string name = "shut" + std::to_string(count);
    ShutStateInfoSyncSignal shut;
    shut.protocol = STP;
    for (const auto& pair : zorl2_bench::ShutStates(count, Order::kSorted)) {
      shut.shutStates.insert(pair);
    }
    AddPair<ShutStateConverter, pb::ShutStateSync>(cases, name, shut);
    pb::ShutStateSync message;
    ShutStateConverter().Convert(shut, message);
    cases[name + "/to_native_empty"] = [message, signal = ShutStateInfoSyncSignal()]() mutable {
      signal.shutStates.clear();
      ShutStateConverter().Convert(message, signal);
    };
  }
  BlockStateInfoSyncSignal block;
  block.protocol = STP;
  for (const auto& pair : zorl2_bench::BlockStates(1000, Order::kSorted)) {
    block.blockStates.insert(pair);
  }
  AddPair<BlockStateConverter, pb::BlockStateSync>(cases, "block1000", block);
  return cases;
}

}  // namespace

// The name that callgrind toggles at.
extern "C" [[gnu::noinline]] void zorl2_measured(const Operation& operation) { operation(); }

int main(int argc, char** argv) {
  auto cases = Cases();
  if (argc == 1) {
    for (const auto& [name, operation] : cases) std::puts(name.c_str());
    return 0;
  }
  const auto found = cases.find(argv[1]);
  if (found == cases.end()) {
    std::fprintf(stderr, "no case %s\n", argv[1]);
    return 1;
  }
  found->second();  // Allocates the storage that the measured call reuses.
  zorl2_measured(found->second);
  return 0;
}
