// Laws that hold for every input.
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <functional>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/differential/compare.h"
#include "tests/differential/generate.h"

namespace pb = zorl2::protobuf;
using proof::Generator;
using proof::Text;

namespace {

// Text that is not UTF-8 is a legal input, so the runtime's log of it is suppressed. RC_PARAMS in
// the environment overrides the number of inputs, and its seed repeats a run.
const bool configured = [] {
  google::protobuf::SetLogHandler(nullptr);
  return setenv("RC_PARAMS", "max_success=2000", 0) == 0;
}();

void Check(const char* law, const std::function<void(Generator&)>& property) {
  EXPECT_TRUE(rc::check(law, [&] {
    Generator generator(*rc::gen::arbitrary<std::uint64_t>());
    property(generator);
  })) << law;
}

template <typename Message>
Message ThroughBytes(const Message& message) {
  Message parsed;
  RC_ASSERT(parsed.ParseFromString(message.SerializeAsString()));
  return parsed;
}

// Converts records there and back. The first trip may lose something, the second one may not.
template <typename Converter, typename Message, typename Record>
void CheckTrips(const char* name, Record (Generator::*record)()) {
  const auto first_trip = [record](Generator& g) {
    Message message;
    while (proof::Ending([&] {
             return Converter().Convert(proof::Native((g.*record)()), message);
           }) != "true") {
      g.DrawDamage();
    }
    return ThroughBytes(message);
  };
  Check((std::string(name) + ": the second trip changes neither record nor bytes").c_str(),
        [&](Generator& g) {
          const Message message = first_trip(g);
          auto once = proof::Native(Record{});
          RC_ASSERT(Converter().Convert(message, once));
          Message again;
          RC_ASSERT(Converter().Convert(once, again));
          RC_ASSERT(again.SerializeAsString() == message.SerializeAsString());
          auto twice = proof::Native(Record{});
          RC_ASSERT(Converter().Convert(ThroughBytes(again), twice));
          RC_ASSERT(Text(twice) == Text(once));
        });
  Check((std::string(name) + ": applying a message twice is applying it once").c_str(),
        [&](Generator& g) {
          const Message message = first_trip(g);
          auto used = proof::Native((g.*record)());
          RC_ASSERT(Converter().Convert(message, used));
          const std::string once = Text(used);
          RC_ASSERT(Converter().Convert(message, used));
          RC_ASSERT(Text(used) == once);
        });
}

TEST(Properties, TripsAreStable) {
  CheckTrips<ZORIDConverter, pb::Zorid>("identifier", &Generator::NativeZorid);
  CheckTrips<IntfEntryConverter, pb::IntfEntry>("entry", &Generator::NativeEntry);
  CheckTrips<ShutStateConverter, pb::ShutStateSync>("shutdown signal", &Generator::NativeShut);
  CheckTrips<BlockStateConverter, pb::BlockStateSync>("blocking signal",
                                                      &Generator::NativeBlockSignal);
  CheckTrips<ZORL2InfoClientConfigConverter, pb::InformationClient>("registration",
                                                                    &Generator::NativeClient);
  CheckTrips<LagMemberConverter, pb::LagMemberOperationProto>("aggregation operation",
                                                              &Generator::NativeLag);
}

// A message for a protocol that state signals accept.
pb::BlockStateSync Signal(Generator& g) {
  BlockStateInfoSyncSignal signal = g.NativeBlockSignal();
  signal.protocol = static_cast<ProtocolType>(g.Below(L1_PROTO));
  pb::BlockStateSync message;
  RC_ASSERT(BlockStateConverter().Convert(signal, message));
  return message;
}

TEST(Properties, SignalsMergeElementByElement) {
  Check("the order of the elements matters only to an interface named twice", [](Generator& g) {
    pb::BlockStateSync message = Signal(g);
    BlockStateInfoSyncSignal sorted, shuffled;
    RC_ASSERT(BlockStateConverter().Convert(message, sorted));
    for (int i = message.intfs_size() - 1; i > 0; --i) {
      message.mutable_intfs()->SwapElements(
          i, static_cast<int>(g.Below(static_cast<std::uint64_t>(i) + 1)));
    }
    RC_ASSERT(BlockStateConverter().Convert(message, shuffled));
    RC_ASSERT(Text(sorted) == Text(shuffled));
  });
  Check("merging two messages is merging their concatenation", [](Generator& g) {
    pb::BlockStateSync first = Signal(g);
    const pb::BlockStateSync second = Signal(g);
    BlockStateInfoSyncSignal stepwise = g.NativeBlockSignal();
    BlockStateInfoSyncSignal at_once = stepwise;
    BlockStateConverter().Convert(first, stepwise);
    BlockStateConverter().Convert(second, stepwise);
    first.MergeFrom(second);
    BlockStateConverter().Convert(first, at_once);
    RC_ASSERT(Text(stepwise) == Text(at_once));
  });
}

TEST(Properties, TheOrderOfRegistrationsDoesNotMatterToTheSet) {
  Check("two messages", [](Generator& g) {
    pb::InformationClient first, second;
    ZORL2InfoClientConfigConverter().Convert(g.NativeClient(), first);
    ZORL2InfoClientConfigConverter().Convert(g.NativeClient(), second);
    ZORL2InfoClientConfig one, other;
    ZORL2InfoClientConfigConverter().Convert(first, one);
    ZORL2InfoClientConfigConverter().Convert(second, one);
    ZORL2InfoClientConfigConverter().Convert(second, other);
    ZORL2InfoClientConfigConverter().Convert(first, other);
    RC_ASSERT(one.interfaceCategories == other.interfaceCategories);
  });
}

}  // namespace
