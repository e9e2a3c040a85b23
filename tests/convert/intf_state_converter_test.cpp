#include "convert/intf_state_converter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/convert/conversions.h"
#include "tests/convert/signals.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::ElementsAre;
using zorl2_test::Add;
using zorl2_test::AddValues;
using zorl2_test::EmptyMessage;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::ExpectMapAt;
using zorl2_test::ExpectRejected;
using zorl2_test::Id;
using zorl2_test::NumbersOutside;

const zorid_t kA = Id(10, 20, 30, 40);
const zorid_t kB = Id(50, 60, 70, 80);
const zorid_t kC = Id(250, 251, 252, 253);
const zorid_t kGreatest = Id(255, 255, 255, 255);

// The value in a message and the native value of the protocols that a state signal can carry.
constexpr std::pair<int, int> kSignalProtocols[] = {
    {0, 12}, {1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}, {7, 6}, {8, 7}, {9, 8}, {12, 11}};

template <typename Case>
class StateConverter : public testing::Test {
 protected:
  using Message = typename Case::Message;
  using Signal = typename Case::Signal;
  using States = typename Case::States;
  static constexpr auto kOn = Case::kOn;
  static constexpr auto kOff = Case::kOff;

  static Signal MakeSignal(const States& states, ProtocolType protocol) {
    return {states, protocol};
  }
  // No member has its default value.
  static Signal Held() { return {{{kA, kOn}}, ERPS}; }

  static Signal ToNative(const Message& message, Signal signal) {
    EXPECT_TRUE(typename Case::Converter().Convert(message, signal));
    return signal;
  }
};

struct CaseName {
  template <typename T>
  static std::string GetName(int) {
    return std::is_same_v<T, zorl2_test::Shut> ? "Shut" : "Block";
  }
};
using Cases = testing::Types<zorl2_test::Shut, zorl2_test::Block>;
TYPED_TEST_SUITE(StateConverter, Cases, CaseName);

TYPED_TEST(StateConverter, MessageToNative_WritesProtocolIdentifiersAndStates) {
  auto message = EmptyMessage<TypeParam>(pb::STP);
  Add<TypeParam>(message, kC, true);
  Add<TypeParam>(message, kA, true);
  Add<TypeParam>(message, kB, false);
  EXPECT_THAT(
      this->ToNative(message, {}),
      EqualsNative(this->MakeSignal({{kA, this->kOn}, {kB, this->kOff}, {kC, this->kOn}}, STP)));
}

TYPED_TEST(StateConverter, MessageToNative_KeepsTheLow8BitsOfEachValue) {
  auto message = EmptyMessage<TypeParam>(pb::LBD);
  AddValues<TypeParam>(message, {0x1FF, 0x80000001, 256, 0xFFFFFF7F}, true);
  EXPECT_THAT(this->ToNative(message, {}),
              EqualsNative(this->MakeSignal({{Id(255, 1, 0, 127), this->kOn}}, LBD)));
}

TYPED_TEST(StateConverter, MessageToNative_TheLaterElementOfAnInterfaceWins) {
  for (const zorid_t& id : {kA, kGreatest}) {
    for (const bool last : {false, true}) {
      auto message = EmptyMessage<TypeParam>(pb::LACP);
      Add<TypeParam>(message, id, !last);
      Add<TypeParam>(message, kB, !last);
      Add<TypeParam>(message, id, last);
      EXPECT_THAT(
          this->ToNative(message, {}),
          EqualsNative(this->MakeSignal(
              {{id, last ? this->kOn : this->kOff}, {kB, last ? this->kOff : this->kOn}}, LACP)));
    }
  }
}

TYPED_TEST(StateConverter, MessageToNative_MergesIntoTheMap) {
  auto message = EmptyMessage<TypeParam>(pb::CFM);
  Add<TypeParam>(message, kB, false);
  EXPECT_THAT(this->ToNative(message, this->Held()),
              EqualsNative(this->MakeSignal({{kA, this->kOn}, {kB, this->kOff}}, CFM)));
  Add<TypeParam>(message, kA, false);
  EXPECT_THAT(this->ToNative(message, this->Held()),
              EqualsNative(this->MakeSignal({{kA, this->kOff}, {kB, this->kOff}}, CFM)));
}

TYPED_TEST(StateConverter, MessageToNative_NoElementChangesTheProtocolAlone) {
  EXPECT_THAT(this->ToNative(EmptyMessage<TypeParam>(pb::BACKUPLINK), this->Held()),
              EqualsNative(this->MakeSignal({{kA, this->kOn}}, BACKUPLINK)));
}

// Any sequence of identifiers, merged into any map, gives the map that results from assigning one
// element after the other.
TYPED_TEST(StateConverter, MessageToNative_MergesElementsOfAnyOrder) {
  std::mt19937 random(4711);
  for (int round = 0; round < 400; ++round) {
    const auto id = [&random] {
      const auto octet = [&random](unsigned bound) {
        return static_cast<std::uint8_t>(random() % bound == 0 ? 255 : random() % bound);
      };
      return Id(octet(2), octet(3), 255, octet(9));
    };
    auto signal = this->MakeSignal({}, ERPS);
    auto& states = signal.*TypeParam::kStates;
    for (auto held = random() % 12; held > 0; --held) {
      states[id()] = random() % 2 == 0 ? this->kOn : this->kOff;
    }
    std::vector<std::pair<zorid_t, bool>> elements(random() % 40);
    for (auto& element : elements) element = {id(), random() % 2 == 0};
    // For every third message the map holds all its interfaces.
    if (round % 3 == 0) {
      for (const auto& element : elements) states[element.first];
    }
    const auto ascending = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (round % 4 == 0) std::stable_sort(elements.begin(), elements.end(), ascending);
    if (round % 4 == 1) std::stable_sort(elements.rbegin(), elements.rend(), ascending);

    auto expected = signal;
    expected.protocol = EFM;
    auto message = EmptyMessage<TypeParam>(pb::EFM);
    for (const auto& [element, on] : elements) {
      Add<TypeParam>(message, element, on);
      (expected.*TypeParam::kStates)[element] = on ? this->kOn : this->kOff;
    }
    ASSERT_THAT(this->ToNative(message, signal), EqualsNative(expected)) << "round " << round;
  }
}

TYPED_TEST(StateConverter, MessageToNative_AMissingProtocolLeavesTheSignalUnchanged) {
  typename TypeParam::Message message;
  Add<TypeParam>(message, kA, false);
  Add<TypeParam>(message, kB, true);
  ExpectRejected<typename TypeParam::Converter>(message, this->Held());
}

// The identifier or the state of one element is missing. The result must depend neither on the
// number of elements before it, nor on duplicate interfaces, nor on the contents of the map.
TYPED_TEST(StateConverter, MessageToNative_AnIncompleteElementLeavesTheSignalUnchanged) {
  const auto id = [](int i) {
    return Id(1, 2, static_cast<std::uint8_t>(i / 256), static_cast<std::uint8_t>(i % 256));
  };
  for (const int count : {1, 2, 17, 300}) {
    for (const int each : {1, 2}) {
      auto whole = EmptyMessage<TypeParam>(pb::LFD);
      for (int i = 0; i < count; ++i) Add<TypeParam>(whole, id(i / each), i % 3 == 0);
      for (const bool held : {false, true}) {
        auto before = this->Held();
        for (int i = 0; held && i < count; i += 2) (before.*TypeParam::kStates)[id(i)] = this->kOn;
        for (int incomplete = 0; incomplete < count; incomplete += count / 10 + 1) {
          auto message = whole;
          message.mutable_intfs(incomplete)->clear_state();
          ExpectRejected<typename TypeParam::Converter>(message, before);
          message = whole;
          message.mutable_intfs(incomplete)->clear_zorid();
          ExpectRejected<typename TypeParam::Converter>(message, before);
        }
      }
    }
  }
}

// A caller can fill an absent identifier through a pointer that it kept.
TYPED_TEST(StateConverter, MessageToNative_AnAbsentIdentifierIsNotRead) {
  auto message = EmptyMessage<TypeParam>(pb::LACP);
  auto& info = Add<TypeParam>(message, kB, true);
  pb::Zorid* zorid = info.mutable_zorid();
  info.clear_zorid();
  zorl2_test::Append(*zorid, {1, 2, 3, 4});
  ExpectRejected<typename TypeParam::Converter>(message, this->Held());
}

// The malformed identifier would terminate the process if it were converted first.
TYPED_TEST(StateConverter, MessageToNative_RejectionsComeBeforeAMalformedIdentifier) {
  auto message = EmptyMessage<TypeParam>(pb::LFD);
  AddValues<TypeParam>(message, {1, 2, 3}, true);
  Add<TypeParam>(message, kB, true).clear_state();
  ExpectRejected<typename TypeParam::Converter>(message, this->Held());
  message = EmptyMessage<TypeParam>(pb::L1_PROTO);
  AddValues<TypeParam>(message, {1, 2, 3}, true);
  auto signal = this->Held();
  ExpectMapAt([&] { typename TypeParam::Converter().Convert(message, signal); });
  EXPECT_THAT(signal, EqualsNative(this->Held()));
}

TYPED_TEST(StateConverter, MessageToNative_ARejectedProtocolLeavesTheSignalUnchanged) {
  auto numbers = NumbersOutside(13);
  numbers.insert(numbers.end(), {pb::L1_PROTO, pb::L2_PROTO});
  for (const std::int32_t number : numbers) {
    auto message = EmptyMessage<TypeParam>(static_cast<pb::ProtocolType>(number));
    Add<TypeParam>(message, kA, false);
    Add<TypeParam>(message, kB, true);
    ASSERT_TRUE(message.IsInitialized());
    auto signal = this->Held();
    ExpectMapAt([&] { typename TypeParam::Converter().Convert(message, signal); });
    EXPECT_THAT(signal, EqualsNative(this->Held())) << number;
  }
}

TYPED_TEST(StateConverter, NativeToMessage_ARejectedProtocolLeavesTheMessageCleared) {
  auto numbers = NumbersOutside(13);
  numbers.insert(numbers.end(), {L1_PROTO, L2_PROTO});
  for (const std::int32_t number : numbers) {
    const auto signal = this->MakeSignal({{kA, this->kOn}}, static_cast<ProtocolType>(number));
    auto message = EmptyMessage<TypeParam>(pb::STP);
    Add<TypeParam>(message, kB, true);
    zorl2_test::AddUnknownField(message);
    ExpectMapAt([&] { typename TypeParam::Converter().Convert(signal, message); });
    EXPECT_THAT(message, EqualsMessage(typename TypeParam::Message())) << number;
  }
}

TYPED_TEST(StateConverter, RoundTrip_TranslatesEveryOtherProtocol) {
  for (const auto& [sent, native] : kSignalProtocols) {
    const auto message = EmptyMessage<TypeParam>(static_cast<pb::ProtocolType>(sent));
    const auto signal = this->ToNative(message, this->Held());
    EXPECT_EQ(signal.protocol, native);
    typename TypeParam::Message back;
    EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, back));
    EXPECT_EQ(TypeParam::Protocol(back), sent);
  }
}

TYPED_TEST(StateConverter, NativeToMessage_ReplacesTheMessageAndAscendsOctetByOctet) {
  auto message = EmptyMessage<TypeParam>(pb::STP);
  auto& element = Add<TypeParam>(message, kB, true);
  Add<TypeParam>(message, kC, true);
  zorl2_test::AddUnknownField(message);
  zorl2_test::AddUnknownField(element);
  zorl2_test::AddUnknownField(*element.mutable_zorid());
  const auto signal = this->MakeSignal({{Id(1, 0, 0, 0), this->kOn},
                                        {Id(0, 255, 255, 255), this->kOff},
                                        {Id(200, 0, 0, 0), this->kOn},
                                        {Id(1, 0, 0, 128), this->kOn}},
                                       L2VM);
  EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
  auto expected = EmptyMessage<TypeParam>(pb::L2VM);
  Add<TypeParam>(expected, Id(0, 255, 255, 255), false);
  Add<TypeParam>(expected, Id(1, 0, 0, 0), true);
  Add<TypeParam>(expected, Id(1, 0, 0, 128), true);
  Add<TypeParam>(expected, Id(200, 0, 0, 0), true);
  EXPECT_THAT(message, EqualsMessage(expected));
}

TYPED_TEST(StateConverter, NativeToMessage_AnEmptyMapGivesTheProtocolAlone) {
  auto message = EmptyMessage<TypeParam>(pb::STP);
  Add<TypeParam>(message, kA, true);
  EXPECT_TRUE(
      typename TypeParam::Converter().Convert(this->MakeSignal({}, PROTOCOL_UNKNOWN), message));
  EXPECT_THAT(message, EqualsMessage(EmptyMessage<TypeParam>(pb::PROTOCOL_UNKNOWN)));
}

TYPED_TEST(StateConverter, NativeToMessage_ReplacesWhatAnAbsentSubmessageHolds) {
  typename TypeParam::Message message;
  pb::Zorid* zorid = message.add_intfs()->mutable_zorid();
  message.Clear();
  zorl2_test::Append(*zorid, {91});
  EXPECT_TRUE(typename TypeParam::Converter().Convert(this->Held(), message));
  ASSERT_EQ(message.intfs_size(), 1);
  EXPECT_THAT(message.intfs(0).zorid().value(), ElementsAre(10, 20, 30, 40));
}

TYPED_TEST(StateConverter, RoundTrip_PreservesTwentyThousandInterfaces) {
  auto signal = this->MakeSignal({}, LBD);
  for (int i = 0; i < 20000; ++i) {
    const zorid_t id = Id(7, 0, static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i));
    (signal.*TypeParam::kStates)[id] = i % 3 == 0 ? this->kOn : this->kOff;
  }
  typename TypeParam::Message message;
  EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
  EXPECT_EQ(message.intfs_size(), 20000);
  EXPECT_TRUE(this->ToNative(message, {}).*TypeParam::kStates == signal.*TypeParam::kStates);
}

TEST(BlockStateConverter, AStateOtherThanOneBecomesForwarding) {
  using zorl2_test::Block;
  for (const std::int32_t number : NumbersOutside(2)) {
    const BlockStateInfoSyncSignal signal{
        {{kA, static_cast<BlockState>(number)}, {kB, BLOCK_STATE_BLOCK}}, STP};
    const BlockStateInfoSyncSignal expected{{{kA, BLOCK_STATE_FORWARD}, {kB, BLOCK_STATE_BLOCK}},
                                            STP};
    pb::BlockStateSync message;
    EXPECT_TRUE(BlockStateConverter().Convert(signal, message));
    EXPECT_EQ(message.intfs(0).state(), pb::BLOCK_STATE_FORWARD) << number;
    EXPECT_EQ(message.intfs(1).state(), pb::BLOCK_STATE_BLOCK);

    message.mutable_intfs(0)->set_state(static_cast<pb::BlockState>(number));
    BlockStateInfoSyncSignal received{{{kA, BLOCK_STATE_BLOCK}}, ERPS};
    EXPECT_TRUE(BlockStateConverter().Convert(message, received));
    EXPECT_THAT(received, EqualsNative(expected)) << number;
  }
}

}  // namespace
