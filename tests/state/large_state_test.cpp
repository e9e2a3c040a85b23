// What is promised of every signal, where one larger than the caches takes another way to it. The
// converters of this program take every message for such a one; it runs
// intf_state_converter_test.cpp too.
#include <gmock/gmock.h>
#include <google/protobuf/arena.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <stdexcept>
#include <vector>

#include "tests/state/fault_recorder.h"
#include "tests/state/signals.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::Eq;
using testing::ExitedWithCode;
using zorl2_test::Add;
using zorl2_test::AddUnknownField;
using zorl2_test::Block;
using zorl2_test::EmptyMessage;
using zorl2_test::ExpectFault;
using zorl2_test::FaultReport;
using zorl2_test::Fill;
using zorl2_test::HasUnknownFields;
using zorl2_test::Id;
using zorl2_test::Shut;

zorid_t Numbered(int number) {
  return Id(7, 9, static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number));
}

template <typename Case>
class LargeState : public testing::Test {
 protected:
  using Message = typename Case::Message;
  using Signal = typename Case::Signal;

  // `count` interfaces, every second one on, or the others.
  static Signal Held(int count, bool on = true) {
    Signal signal;
    signal.protocol = CFM;
    for (int i = 0; i < count; ++i) {
      Case::States(signal)[Numbered(i)] = (i % 2 == 0) == on ? Case::kOn : Case::kOff;
    }
    return signal;
  }

  static Message MessageOf(const Signal& signal) {
    auto message = EmptyMessage<Case>(pb::LBD);
    for (const auto& [id, state] : Case::States(signal)) {
      Add<Case>(message, id, state == Case::kOn);
    }
    return message;
  }

  // A message that lacks a field at its very end leaves the signal as it was.
  static void ExpectLeft(const Message& whole, const Signal& held) {
    std::vector<Message> damaged(2, whole);
    Add<Case>(damaged[0], Id(255, 0, 0, 1), true).clear_zorid();
    Add<Case>(damaged[1], Id(255, 0, 0, 1), true).clear_state();
    for (const Message& message : damaged) {
      Signal signal = held;
      EXPECT_FALSE(typename Case::Converter().Convert(message, signal));
      EXPECT_EQ(Case::States(signal), Case::States(held));
      EXPECT_EQ(signal.protocol, held.protocol);
    }
  }
};

using Cases = testing::Types<Shut, Block>;
TYPED_TEST_SUITE(LargeState, Cases);

TYPED_TEST(LargeState, AMissingFieldAtTheEndTakesAllBack) {
  // As many changes as are remembered, one less and one more, and far more.
  for (const int count : {1, 2, 255, 256, 257, 258, 1000}) {
    SCOPED_TRACE(count);
    const auto message = this->MessageOf(this->Held(count));
    this->ExpectLeft(message, {});
    this->ExpectLeft(message, this->Held(count));
    this->ExpectLeft(message, this->Held(count, false));
    this->ExpectLeft(message, this->Held(count / 2));
    auto others = this->Held(1);
    TypeParam::States(others)[Id(1, 2, 3, 4)] = TypeParam::kOn;
    this->ExpectLeft(message, others);
  }
}

TYPED_TEST(LargeState, AnInterfaceNamedOftenIsTakenBackToItsFirstState) {
  const auto held = this->Held(2);
  auto message = EmptyMessage<TypeParam>(pb::LBD);
  for (const int number : {0, 5, 1, 0, 5, 1, 0, 0, 5, 5}) {
    Add<TypeParam>(message, Numbered(number), message.intfs_size() % 3 == 0);
  }
  this->ExpectLeft(message, held);
  this->ExpectLeft(message, {});
}

TYPED_TEST(LargeState, AnyMessageIsMergedOrLeavesTheSignalAsItWas) {
  std::mt19937 random(815);
  int refused = 0;
  for (int round = 0; round < 300; ++round) {
    const int range = round % 2 == 0 ? 20 : 2000;
    typename TypeParam::Signal signal;
    signal.protocol = CFM;
    for (auto held = random() % 600; round % 5 != 0 && held > 0; --held) {
      TypeParam::States(signal)[Numbered(static_cast<int>(random()) & 1023)] =
          random() % 2 == 0 ? TypeParam::kOn : TypeParam::kOff;
    }
    const auto before = TypeParam::States(signal);
    std::vector<std::pair<zorid_t, bool>> elements(random() % 800);
    for (auto& element : elements) {
      element = {Numbered(static_cast<int>(random() % static_cast<unsigned>(range))),
                 random() % 2 == 0};
    }
    if (round % 3 != 0) {
      std::stable_sort(elements.begin(), elements.end(),
                       [](const auto& a, const auto& b) { return a.first < b.first; });
    }
    auto message = EmptyMessage<TypeParam>(pb::LBD);
    auto expected = before;
    for (const auto& [id, on] : elements) {
      Add<TypeParam>(message, id, on);
      expected[id] = on ? TypeParam::kOn : TypeParam::kOff;
    }
    const bool lacking = random() % 2 == 0 && !elements.empty();
    if (lacking) {
      ++refused;
      message.mutable_intfs(static_cast<int>(random() % elements.size()))->clear_state();
      expected = before;
    }
    ASSERT_EQ(typename TypeParam::Converter().Convert(message, signal), !lacking);
    ASSERT_EQ(TypeParam::States(signal), expected) << "round " << round;
    ASSERT_EQ(signal.protocol, lacking ? CFM : LBD);
  }
  EXPECT_GT(refused, 100);
}

template <typename Case>
void ConvertMalformedBehind(int count) {
  auto message = EmptyMessage<Case>(pb::LBD);
  for (int i = 0; i < count; ++i) Add<Case>(message, Numbered(i), true);
  Fill(*Add<Case>(message, Numbered(count), true).mutable_zorid(), {1, 2, 3});
  typename Case::Signal signal;
  Case::States(signal)[Id(1, 2, 3, 4)] = Case::kOn;
  ExpectFault();
  typename Case::Converter().Convert(message, signal);
}

TEST(LargeStateDeathTest, AMalformedIdentifierEndsTheProcessHoweverMuchHasBeenMerged) {
  for (const int count : {0, 1, 300}) {
    EXPECT_EXIT(ConvertMalformedBehind<Shut>(count), ExitedWithCode(1), Eq(FaultReport(64)));
    EXPECT_EXIT(ConvertMalformedBehind<Block>(count), ExitedWithCode(1), Eq(FaultReport(100)));
  }
}

TYPED_TEST(LargeState, WritingOverAnotherMessageLeavesNothingOfIt) {
  google::protobuf::Arena arena;
  for (const int before : {0, 1, 299, 300, 301, 900}) {
    auto used = this->MessageOf(this->Held(before, false));
    AddUnknownField(used);
    for (auto& info : *used.mutable_intfs()) {
      AddUnknownField(info);
      AddUnknownField(*info.mutable_zorid());
    }
    const auto signal = this->Held(300);
    typename TypeParam::Message fresh;
    EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, fresh));
    ASSERT_EQ(fresh.intfs_size(), 300);

    auto* onArena = google::protobuf::Arena::CreateMessage<typename TypeParam::Message>(&arena);
    onArena->CopyFrom(used);
    for (auto* message : {&used, onArena}) {
      EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, *message));
      EXPECT_EQ(message->SerializeAsString(), fresh.SerializeAsString()) << before;
      EXPECT_FALSE(HasUnknownFields(*message));
      // The cleared interfaces behind the last one are handed out again.
      Add<TypeParam>(*message, Numbered(1000), true);
      EXPECT_FALSE(HasUnknownFields(message->intfs(300)));
    }
  }
}

TYPED_TEST(LargeState, ARefusedProtocolLeavesTheMessageCleared) {
  auto message = this->MessageOf(this->Held(20));
  AddUnknownField(message);
  AddUnknownField(*message.mutable_intfs(3));
  auto signal = this->Held(10);
  signal.protocol = L1_PROTO;
  EXPECT_THROW(typename TypeParam::Converter().Convert(signal, message), std::out_of_range);
  EXPECT_EQ(message.ByteSizeLong(), 0u);
  EXPECT_EQ(message.intfs_size(), 0);

  signal.protocol = LBD;
  EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
  EXPECT_EQ(message.SerializeAsString(), this->MessageOf(signal).SerializeAsString());
}

}  // namespace
