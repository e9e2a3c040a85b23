#include "convert/intf_state_converter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/state/signals.h"

namespace pb = zorl2::protobuf;

namespace {

using zorl2_test::Add;
using zorl2_test::AddUnknownField;
using zorl2_test::Block;
using zorl2_test::EmptyMessage;
using zorl2_test::Fill;
using zorl2_test::HasUnknownFields;
using zorl2_test::Id;
using zorl2_test::Number;
using zorl2_test::Shut;

const zorid_t kA = Id(10, 20, 30, 40);
const zorid_t kB = Id(50, 60, 70, 80);
const zorid_t kC = Id(250, 251, 252, 253);

template <typename T>
class StateConverter : public testing::Test {
 protected:
  using States = std::map<zorid_t, typename T::State>;

  // A signal with one entry, no field at its default.
  static typename T::Signal HeldSignal() {
    typename T::Signal signal;
    T::States(signal)[kA] = T::kOn;
    signal.protocol = ERPS;
    return signal;
  }

  static void ExpectHeld(const typename T::Signal& signal) {
    EXPECT_EQ(T::States(signal), (States{{kA, T::kOn}}));
    EXPECT_EQ(signal.protocol, ERPS);
  }

  typename T::Converter converter;
};

struct CaseName {
  template <typename T>
  static std::string GetName(int) {
    return std::is_same_v<T, Shut> ? "Shut" : "Block";
  }
};

using Cases = testing::Types<Shut, Block>;
TYPED_TEST_SUITE(StateConverter, Cases, CaseName);

TYPED_TEST(StateConverter, MessageToNative_TakesProtocolIdentifiersAndStates) {
  auto message = EmptyMessage<TypeParam>(pb::STP);
  Add<TypeParam>(message, kA, true);
  Add<TypeParam>(message, kB, false);
  Add<TypeParam>(message, kC, true);
  typename TypeParam::Signal signal;
  EXPECT_TRUE(this->converter.Convert(message, signal));
  EXPECT_EQ(signal.protocol, STP);
  EXPECT_EQ(TypeParam::States(signal),
            (std::map<zorid_t, typename TypeParam::State>{
                {kA, TypeParam::kOn}, {kB, TypeParam::kOff}, {kC, TypeParam::kOn}}));
}

TYPED_TEST(StateConverter, MessageToNative_TheLaterElementOfAnInterfaceWins) {
  for (const bool last : {false, true}) {
    auto message = EmptyMessage<TypeParam>(pb::LACP);
    Add<TypeParam>(message, kA, !last);
    Add<TypeParam>(message, kB, !last);
    Add<TypeParam>(message, kA, last);
    typename TypeParam::Signal signal;
    EXPECT_TRUE(this->converter.Convert(message, signal));
    EXPECT_EQ(TypeParam::States(signal), (std::map<zorid_t, typename TypeParam::State>{
                                             {kA, last ? TypeParam::kOn : TypeParam::kOff},
                                             {kB, last ? TypeParam::kOff : TypeParam::kOn}}));
  }
}

TYPED_TEST(StateConverter, MessageToNative_KeepsInterfacesThatTheMessageDoesNotName) {
  auto signal = this->HeldSignal();
  auto message = EmptyMessage<TypeParam>(pb::CFM);
  Add<TypeParam>(message, kB, false);
  EXPECT_TRUE(this->converter.Convert(message, signal));
  EXPECT_EQ(signal.protocol, CFM);
  EXPECT_EQ(TypeParam::States(signal), (std::map<zorid_t, typename TypeParam::State>{
                                           {kA, TypeParam::kOn}, {kB, TypeParam::kOff}}));
}

TYPED_TEST(StateConverter, MessageToNative_OverwritesInterfacesThatTheMessageNames) {
  auto signal = this->HeldSignal();
  auto message = EmptyMessage<TypeParam>(pb::CFM);
  Add<TypeParam>(message, kA, false);
  EXPECT_TRUE(this->converter.Convert(message, signal));
  EXPECT_EQ(TypeParam::States(signal),
            (std::map<zorid_t, typename TypeParam::State>{{kA, TypeParam::kOff}}));
}

TYPED_TEST(StateConverter, MessageToNative_NoElementChangesTheProtocolAlone) {
  auto signal = this->HeldSignal();
  EXPECT_TRUE(this->converter.Convert(EmptyMessage<TypeParam>(pb::BACKUPLINK), signal));
  EXPECT_EQ(signal.protocol, BACKUPLINK);
  signal.protocol = ERPS;
  this->ExpectHeld(signal);
}

TYPED_TEST(StateConverter, MessageToNative_TakesTheLowEightBitsOfAnOctet) {
  auto message = EmptyMessage<TypeParam>(pb::LBD);
  Fill(*Add<TypeParam>(message, kA, true).mutable_zorid(), {0x1FF, 0x80000001, 256, 0xFFFFFF7F});
  typename TypeParam::Signal signal;
  EXPECT_TRUE(this->converter.Convert(message, signal));
  EXPECT_EQ(TypeParam::States(signal),
            (std::map<zorid_t, typename TypeParam::State>{{Id(255, 1, 0, 127), TypeParam::kOn}}));
}

TYPED_TEST(StateConverter, MessageToNative_AMissingFieldLeavesTheSignalAsItWas) {
  auto full = EmptyMessage<TypeParam>(pb::LFD);
  Add<TypeParam>(full, kA, false);
  Add<TypeParam>(full, kB, true);

  std::vector<typename TypeParam::Message> damaged;
  TypeParam::ClearProtocol(damaged.emplace_back(full));
  for (const int element : {0, 1}) {
    damaged.emplace_back(full).mutable_intfs(element)->clear_zorid();
    damaged.emplace_back(full).mutable_intfs(element)->clear_state();
  }
  for (const auto& message : damaged) {
    auto signal = this->HeldSignal();
    EXPECT_FALSE(this->converter.Convert(message, signal)) << message.ShortDebugString();
    this->ExpectHeld(signal);
  }
}

// However many elements come before the one that lacks a field, whether or not they name an
// interface twice, and whether the map holds none, half or all of the interfaces.
TYPED_TEST(StateConverter, MessageToNative_AMissingFieldAnywhereLeavesTheSignalUnchanged) {
  const auto id = [](int i) {
    return Id(1, 2, static_cast<std::uint8_t>(i / 256), static_cast<std::uint8_t>(i % 256));
  };
  for (const int count : {1, 2, 16, 17, 300}) {
    for (const int each : {1, 2}) {  // Each interface is named once, or twice with both states.
      auto whole = EmptyMessage<TypeParam>(pb::LFD);
      for (int i = 0; i < count; ++i) Add<TypeParam>(whole, id(i / each), i % 3 == 0);
      for (const int held_each : {0, 1, 2}) {
        typename TypeParam::Signal before;
        before.protocol = ERPS;
        for (int i = 0; held_each != 0 && i < count; i += held_each) {
          TypeParam::States(before)[id(i)] = i % 3 == 0 ? TypeParam::kOff : TypeParam::kOn;
        }
        for (int lacking = 0; lacking < count; lacking += count / 10 + 1) {
          SCOPED_TRACE(testing::Message()
                       << count << ' ' << each << ' ' << held_each << ' ' << lacking);
          for (const bool state : {false, true}) {
            auto message = whole;
            auto& info = *message.mutable_intfs(lacking);
            if (state) {
              info.clear_state();
            } else {
              info.clear_zorid();
            }
            auto signal = before;
            EXPECT_FALSE(this->converter.Convert(message, signal));
            EXPECT_EQ(signal.protocol, ERPS);
            EXPECT_EQ(TypeParam::States(signal), TypeParam::States(before));
          }
        }
      }
    }
  }
}

TYPED_TEST(StateConverter, MessageToNative_AMissingFieldIsNoticedBeforeAMalformedIdentifier) {
  // Otherwise the process would end here.
  auto message = EmptyMessage<TypeParam>(pb::LFD);
  Fill(*Add<TypeParam>(message, kA, true).mutable_zorid(), {1, 2, 3});
  Add<TypeParam>(message, kB, true).clear_state();
  auto signal = this->HeldSignal();
  EXPECT_FALSE(this->converter.Convert(message, signal));
  this->ExpectHeld(signal);
}

TYPED_TEST(StateConverter, MessageToNative_ARefusedProtocolIsNoticedBeforeAMalformedIdentifier) {
  auto message = EmptyMessage<TypeParam>(pb::L1_PROTO);
  Fill(*Add<TypeParam>(message, kA, true).mutable_zorid(), {1, 2, 3});
  auto signal = this->HeldSignal();
  EXPECT_THROW(this->converter.Convert(message, signal), std::out_of_range);
  this->ExpectHeld(signal);
}

TYPED_TEST(StateConverter, MessageToNative_TheGreatestIdentifierMayComeBeforeHeldOnes) {
  const zorid_t greatest = Id(255, 255, 255, 255);
  const zorid_t least = Id(0, 0, 0, 0);
  auto signal = this->HeldSignal();
  TypeParam::States(signal)[least] = TypeParam::kOn;
  auto message = EmptyMessage<TypeParam>(pb::ERPS);
  Add<TypeParam>(message, greatest, true);
  Add<TypeParam>(message, least, false);
  Add<TypeParam>(message, kA, false);
  EXPECT_TRUE(this->converter.Convert(message, signal));
  EXPECT_EQ(TypeParam::States(signal),
            (std::map<zorid_t, typename TypeParam::State>{
                {least, TypeParam::kOff}, {kA, TypeParam::kOff}, {greatest, TypeParam::kOn}}));
}

TYPED_TEST(StateConverter, MessageToNative_TheLaterElementOfTheGreatestIdentifierWins) {
  const zorid_t greatest = Id(255, 255, 255, 255);
  auto message = EmptyMessage<TypeParam>(pb::ERPS);
  Add<TypeParam>(message, greatest, true);
  Add<TypeParam>(message, greatest, false);
  typename TypeParam::Signal signal;
  EXPECT_TRUE(this->converter.Convert(message, signal));
  EXPECT_EQ(TypeParam::States(signal),
            (std::map<zorid_t, typename TypeParam::State>{{greatest, TypeParam::kOff}}));
}

// The order of the elements must not matter for the merge: any sequence of identifiers, merged into
// any signal, gives what assigning them one after the other gives.
TYPED_TEST(StateConverter, MessageToNative_MergesElementsOfAnyOrder) {
  std::mt19937 random(4711);
  for (int round = 0; round < 400; ++round) {
    const auto id = [&random] {
      return Id(static_cast<std::uint8_t>(random() % 2), static_cast<std::uint8_t>(random() % 3), 7,
                static_cast<std::uint8_t>(random() % 9));
    };
    typename TypeParam::Signal signal;
    signal.protocol = EFM;
    for (auto held = random() % 12; held > 0; --held) {
      TypeParam::States(signal)[id()] = random() % 2 == 0 ? TypeParam::kOn : TypeParam::kOff;
    }
    auto expected = TypeParam::States(signal);
    std::vector<std::pair<zorid_t, bool>> elements(random() % 40);
    for (auto& element : elements) element = {id(), random() % 2 == 0};
    // Of every third message all interfaces are held.
    if (round % 3 == 0) {
      for (const auto& element : elements) TypeParam::States(signal)[element.first];
      expected = TypeParam::States(signal);
    }
    const auto ascending = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (round % 4 == 0) std::stable_sort(elements.begin(), elements.end(), ascending);
    if (round % 4 == 1) std::stable_sort(elements.rbegin(), elements.rend(), ascending);

    auto message = EmptyMessage<TypeParam>(pb::EFM);
    for (const auto& [element, on] : elements) {
      Add<TypeParam>(message, element, on);
      expected[element] = on ? TypeParam::kOn : TypeParam::kOff;
    }
    ASSERT_TRUE(this->converter.Convert(message, signal));
    ASSERT_EQ(TypeParam::States(signal), expected) << "round " << round;
  }
}

TYPED_TEST(StateConverter, NativeToMessage_SetsProtocolIdentifiersAndStates) {
  typename TypeParam::Signal signal;
  signal.protocol = L2VM;
  TypeParam::States(signal)[kB] = TypeParam::kOn;
  TypeParam::States(signal)[kA] = TypeParam::kOff;
  typename TypeParam::Message message;
  EXPECT_TRUE(this->converter.Convert(signal, message));
  EXPECT_EQ(TypeParam::Protocol(message), pb::L2VM);
  ASSERT_EQ(message.intfs_size(), 2);
  EXPECT_THAT(message.intfs(0).zorid().value(), testing::ElementsAre(10, 20, 30, 40));
  EXPECT_EQ(message.intfs(0).state(), TypeParam::kMessageOff);
  EXPECT_TRUE(message.intfs(0).has_state());
  EXPECT_THAT(message.intfs(1).zorid().value(), testing::ElementsAre(50, 60, 70, 80));
  EXPECT_EQ(message.intfs(1).state(), TypeParam::kMessageOn);
  EXPECT_TRUE(message.IsInitialized());
}

TYPED_TEST(StateConverter, NativeToMessage_AscendsOctetByOctet) {
  typename TypeParam::Signal signal;
  TypeParam::States(signal)[Id(1, 0, 0, 0)] = TypeParam::kOn;
  TypeParam::States(signal)[Id(0, 255, 255, 255)] = TypeParam::kOn;
  TypeParam::States(signal)[Id(200, 0, 0, 0)] = TypeParam::kOn;
  TypeParam::States(signal)[Id(1, 0, 0, 128)] = TypeParam::kOn;
  typename TypeParam::Message message;
  EXPECT_TRUE(this->converter.Convert(signal, message));
  ASSERT_EQ(message.intfs_size(), 4);
  EXPECT_THAT(message.intfs(0).zorid().value(), testing::ElementsAre(0, 255, 255, 255));
  EXPECT_THAT(message.intfs(1).zorid().value(), testing::ElementsAre(1, 0, 0, 0));
  EXPECT_THAT(message.intfs(2).zorid().value(), testing::ElementsAre(1, 0, 0, 128));
  EXPECT_THAT(message.intfs(3).zorid().value(), testing::ElementsAre(200, 0, 0, 0));
}

TYPED_TEST(StateConverter, NativeToMessage_AnEmptyMapGivesTheProtocolAlone) {
  typename TypeParam::Signal signal;
  signal.protocol = PROTOCOL_UNKNOWN;
  auto message = EmptyMessage<TypeParam>(pb::STP);
  Add<TypeParam>(message, kA, true);
  EXPECT_TRUE(this->converter.Convert(signal, message));
  EXPECT_TRUE(TypeParam::HasProtocol(message));
  EXPECT_EQ(TypeParam::Protocol(message), pb::PROTOCOL_UNKNOWN);
  EXPECT_EQ(message.intfs_size(), 0);
}

TYPED_TEST(StateConverter, NativeToMessage_NothingThatTheMessageHeldSurvives) {
  auto message = EmptyMessage<TypeParam>(pb::STP);
  auto& element = Add<TypeParam>(message, kB, true);
  Add<TypeParam>(message, kC, true);
  AddUnknownField(message);
  AddUnknownField(element);
  AddUnknownField(*element.mutable_zorid());
  EXPECT_TRUE(this->converter.Convert(this->HeldSignal(), message));

  auto expected = EmptyMessage<TypeParam>(pb::ERPS);
  Add<TypeParam>(expected, kA, true);
  EXPECT_EQ(message.SerializeAsString(), expected.SerializeAsString());
  EXPECT_FALSE(HasUnknownFields(message));
}

// Larger than the caches of a processor, and converted in another way.
TYPED_TEST(StateConverter, TwentyThousandInterfacesAreConvertedAsFewAre) {
  constexpr int kCount = 20000;
  typename TypeParam::Signal signal;
  signal.protocol = LBD;
  for (int i = 0; i < kCount; ++i) {
    TypeParam::States(signal)[Id(7, static_cast<std::uint8_t>(i >> 16),
                                 static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i))] =
        i % 3 == 0 ? TypeParam::kOn : TypeParam::kOff;
  }
  typename TypeParam::Message message;
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(this->converter.Convert(signal, message));
    ASSERT_EQ(message.intfs_size(), kCount);
    auto received = this->HeldSignal();
    EXPECT_TRUE(this->converter.Convert(message, received));
    EXPECT_EQ(TypeParam::States(received).size(), kCount + 1U);
    TypeParam::States(received).erase(kA);
    EXPECT_EQ(TypeParam::States(received), TypeParam::States(signal));
    EXPECT_EQ(received.protocol, LBD);
  }
  message.mutable_intfs(kCount - 1)->clear_state();
  auto held = this->HeldSignal();
  EXPECT_FALSE(this->converter.Convert(message, held));
  this->ExpectHeld(held);

  EXPECT_TRUE(this->converter.Convert(this->HeldSignal(), message));
  EXPECT_EQ(message.intfs_size(), 1);
}

TYPED_TEST(StateConverter, IsReachedThroughItsBaseAndKnowsItsType) {
  using Base = Converter<typename TypeParam::Message, typename TypeParam::Signal>;
  const std::unique_ptr<Base> base = std::make_unique<typename TypeParam::Converter>();
  EXPECT_NE(dynamic_cast<typename TypeParam::Converter*>(base.get()), nullptr);
  EXPECT_EQ(typeid(*base), typeid(typename TypeParam::Converter));
  typename TypeParam::Message message;
  EXPECT_TRUE(base->Convert(this->HeldSignal(), message));
  auto signal = typename TypeParam::Signal();
  EXPECT_TRUE(base->Convert(message, signal));
  this->ExpectHeld(signal);
  // No data members: nothing but the pointer to the table of its functions.
  EXPECT_EQ(sizeof(typename TypeParam::Converter), sizeof(void*));
}

TEST(BlockStateConverter, NativeToMessage_EveryStateButBlockIsSentAsForward) {
  for (const std::int32_t state : {7, 2, -1, 257, std::numeric_limits<std::int32_t>::min()}) {
    BlockStateInfoSyncSignal signal;
    signal.blockStates[kA] = Number<BlockState>(state);
    signal.blockStates[kB] = BLOCK_STATE_BLOCK;
    pb::BlockStateSync message;
    EXPECT_TRUE(BlockStateConverter().Convert(signal, message));
    ASSERT_EQ(message.intfs_size(), 2);
    EXPECT_EQ(message.intfs(0).state(), pb::BLOCK_STATE_FORWARD) << state;
    EXPECT_EQ(message.intfs(1).state(), pb::BLOCK_STATE_BLOCK);
  }
}

// The records' members, in this order, are what other code of the manager relies on.
TEST(StateSignals, HoldTheMapFirstAndTheProtocolBehindIt) {
  static_assert(
      std::is_same_v<decltype(ShutStateInfoSyncSignal::shutStates), std::map<zorid_t, bool>>);
  static_assert(std::is_same_v<decltype(BlockStateInfoSyncSignal::blockStates),
                               std::map<zorid_t, BlockState>>);
  const ShutStateInfoSyncSignal shut{{{kA, true}}, ERPS};
  EXPECT_EQ(shut.protocol, ERPS);
  EXPECT_EQ(static_cast<const void*>(&shut), static_cast<const void*>(&shut.shutStates));
  EXPECT_LT(static_cast<const void*>(&shut.shutStates), static_cast<const void*>(&shut.protocol));
  const BlockStateInfoSyncSignal block{{{kA, BLOCK_STATE_BLOCK}}, ERPS};
  EXPECT_EQ(block.protocol, ERPS);
  EXPECT_EQ(static_cast<const void*>(&block), static_cast<const void*>(&block.blockStates));
}

}  // namespace
