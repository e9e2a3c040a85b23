// Memory runs out while a signal is converted, by the library's own converters and by those that
// take every message for one larger than the caches.
#include <gtest/gtest.h>

#include "convert/intf_state_converter.h"
#include "tests/reliability/exhaust.h"

namespace pb = zorl2::protobuf;

namespace {

constexpr std::uint8_t kCount = 12;

ShutStateInfoSyncSignal Signal() {
  ShutStateInfoSyncSignal signal;
  signal.protocol = LACP;
  for (std::uint8_t i = 0; i < kCount; ++i) signal.shutStates[zorid_t{{1, 2, 3, i}}] = i % 3 == 0;
  return signal;
}

pb::ShutStateSync Message() {
  pb::ShutStateSync message;
  ShutStateConverter().Convert(Signal(), message);
  return message;
}

// One interface that the message does not name, or none.
ShutStateInfoSyncSignal Before(bool empty) {
  ShutStateInfoSyncSignal signal;
  signal.protocol = ERPS;
  if (!empty) signal.shutStates[zorid_t{{9, 9, 9, 9}}] = true;
  return signal;
}

// Whether one allocation fails or all from then on.
TEST(SignalExhaustion, TheProtocolAndTheElementsBeforeStayMerged) {
  const pb::ShutStateSync message = Message();
  for (const bool empty : {true, false}) {
    for (const auto fail : {proof::FailAllocation, proof::FailAllocationsFrom}) {
      for (long n = 1; n <= kCount; ++n) {
        const long live = proof::LiveAllocations();
        {
          auto signal = Before(empty);
          auto expected = Before(empty).shutStates;
          for (const auto& [id, state] : Signal().shutStates) {
            if (id.octets[3] + 1 < n) expected[id] = state;
          }
          fail(n);
          EXPECT_THROW(ShutStateConverter().Convert(message, signal), std::bad_alloc);
          EXPECT_TRUE(proof::StopFailing());
          EXPECT_EQ(signal.protocol, LACP);
          EXPECT_EQ(signal.shutStates, expected) << n;
        }
        EXPECT_EQ(proof::LiveAllocations(), live);
      }
    }
  }
}

TEST(SignalExhaustion, AMissingFieldIsToldEvenThen) {
  pb::ShutStateSync message = Message();
  message.mutable_intfs(kCount - 1)->clear_state();
  for (const bool empty : {true, false}) {
    for (long n = 1; n < kCount; ++n) {
      auto signal = Before(empty);
      proof::FailAllocationsFrom(n);
      EXPECT_FALSE(ShutStateConverter().Convert(message, signal));
      // Only an empty map is sure to be filled while the message is tested.
      EXPECT_TRUE(proof::StopFailing() || !empty);
      EXPECT_EQ(signal.shutStates, Before(empty).shutStates);
      EXPECT_EQ(signal.protocol, ERPS);
    }
  }
}

// A used message is written over in its place: what was in it beyond what has been set goes.
TEST(SignalExhaustion, ToMessageKeepsWhatWasSet) {
  const ShutStateInfoSyncSignal signal = Signal();
  const pb::ShutStateSync whole = Message();
  pb::ShutStateSync used = whole;
  used.MergeFrom(whole);
  for (int i = 0; i < 2 * kCount; i += 3) used.mutable_intfs(i)->clear_zorid();
  used.GetReflection()->MutableUnknownFields(&used)->AddVarint(1000, 5);
  for (const pb::ShutStateSync& before : {pb::ShutStateSync(), used}) {
    const long failures =
        proof::Exhaust([&] { return before; },
                       [&](pb::ShutStateSync& message) {
                         EXPECT_TRUE(ShutStateConverter().Convert(signal, message));
                       },
                       [&](const pb::ShutStateSync& message, bool failed) {
                         EXPECT_TRUE(proof::IsPartOf(message, whole)) << message.ShortDebugString();
                         EXPECT_TRUE(message.GetReflection()->GetUnknownFields(message).empty());
                         EXPECT_TRUE(failed || message.intfs_size() == kCount);
                       });
    // The list, and three allocations for each interface; or two for each identifier that was gone.
    EXPECT_EQ(failures, before.intfs_size() == 0 ? 1 + 3 * kCount : 2 * kCount / 3);
  }
}

}  // namespace
