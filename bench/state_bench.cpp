// Both state signals, in several sizes and orders.
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/measure.h"
#include "convert/intf_state_converter.h"

namespace zorl2_bench {

namespace {

namespace pb = zorl2::protobuf;

struct Shut {
  using Signal = ShutStateInfoSyncSignal;
  using Message = pb::ShutStateSync;
  using Converter = ShutStateConverter;
  static constexpr const char* kName = "shut";
  static constexpr auto& kMake = ShutStates;
  static constexpr auto kMap = &Signal::shutStates;
};

struct Block {
  using Signal = BlockStateInfoSyncSignal;
  using Message = pb::BlockStateSync;
  using Converter = BlockStateConverter;
  static constexpr const char* kName = "block";
  static constexpr auto& kMake = BlockStates;
  static constexpr auto kMap = &Signal::blockStates;
};

template <typename Kind>
typename Kind::Signal FilledSignal(int count) {
  typename Kind::Signal signal;
  signal.protocol = STP;
  for (const auto& pair : Kind::kMake(count, Order::kSorted)) {
    (signal.*Kind::kMap).insert((signal.*Kind::kMap).end(), pair);
  }
  return signal;
}

// The elements of the message come in the given order.
template <typename Kind>
typename Kind::Message MessageOf(int count, Order order) {
  typename Kind::Message message;
  for (const auto& pair : Kind::kMake(count, order)) {
    typename Kind::Signal one;
    one.protocol = STP;
    (one.*Kind::kMap).insert(pair);
    typename Kind::Message element;
    typename Kind::Converter().Convert(one, element);
    message.MergeFrom(element);
  }
  return message;
}

template <typename Kind, template <typename> class Destination>
void ToMessage(const std::string& name, int count) {
  using Message = typename Kind::Message;
  const auto destination = [count] {
    const auto block = 8192 + static_cast<std::size_t>(count) * 256;
    return std::make_unique<Destination<Message>>(block);
  };
  MeasureWithThreads(name + "/convert", [=] {
    return [converter = typename Kind::Converter(), signal = FilledSignal<Kind>(count),
            into = destination()]() mutable {
      Message& message = into->Next();
      converter.Convert(signal, message);
      Keep(message);
    };
  });
  Measure(name + "/copy", [=] {
    return [source = MessageOf<Kind>(count, Order::kSorted), into = destination()] {
      Message& message = into->Next();
      message.CopyFrom(source);
      Keep(message);
    };
  });
}

// Sets the same states in a map. If they ascend, the place after the last one is the hint.
template <typename Map, typename States>
[[gnu::noinline]] void SetByHand(const States& states, Order order, Map& map) {
  if (order == Order::kShuffled) {
    for (const auto& [id, state] : states) map[id] = state;
    return;
  }
  auto next = map.begin();
  const bool empty = map.empty();
  for (const auto& [id, state] : states) {
    const auto entry = map.insert_or_assign(next, id, state);
    if (!empty) next = std::next(entry);
  }
}

// Measures a conversion, and the same states set in a map from a vector of pairs.
template <typename Kind>
void ToNative(const std::string& name, int count, Order order, bool held) {
  using Signal = typename Kind::Signal;
  const auto before = [=] { return held ? FilledSignal<Kind>(count) : Signal(); };
  MeasureWithThreads(name + "/convert", [=] {
    return [converter = typename Kind::Converter(), message = MessageOf<Kind>(count, order),
            signal = before(), held]() mutable {
      if (!held) (signal.*Kind::kMap).clear();
      converter.Convert(message, signal);
      Keep(signal);
    };
  });
  Measure(name + "/map", [=] {
    return [states = Kind::kMake(count, order), order, signal = before(), held]() mutable {
      if (!held) (signal.*Kind::kMap).clear();
      SetByHand(states, order, signal.*Kind::kMap);
      Keep(signal);
    };
  });
}

template <typename Kind>
void Register() {
  for (const int count : {10, 1000, 100000}) {
    const std::string record = std::string(Kind::kName) + std::to_string(count);
    ToMessage<Kind, Reused>(record + "/to_message/reused", count);
    ToMessage<Kind, Fresh>(record + "/to_message/fresh", count);
    ToMessage<Kind, OnArena>(record + "/to_message/arena", count);
    ToNative<Kind>(record + "/to_native/empty_ascending", count, Order::kSorted, false);
    ToNative<Kind>(record + "/to_native/empty_shuffled", count, Order::kShuffled, false);
    ToNative<Kind>(record + "/to_native/held_ascending", count, Order::kSorted, true);
    ToNative<Kind>(record + "/to_native/held_shuffled", count, Order::kShuffled, true);
  }
}

}  // namespace

void RegisterStateCases() {
  Register<Shut>();
  Register<Block>();
}

}  // namespace zorl2_bench
