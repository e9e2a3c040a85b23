// Both state signals, by size and order.
#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/floors.h"
#include "bench/measure.h"
#include "convert/intf_state_converter.h"

namespace zorl2_bench {

namespace {

struct Shut {
  using Signal = ShutStateInfoSyncSignal;
  using Message = pb::ShutStateSync;
  using State = bool;
  using Converter = ShutStateConverter;
  static constexpr const char* kName = "shut";
  static constexpr auto& kMake = ShutStates;
  static std::map<zorid_t, bool>& Map(Signal& signal) { return signal.shutStates; }
  static void SetProtocol(Message& message) { message.set_shutprotocol(pb::STP); }
};

struct Block {
  using Signal = BlockStateInfoSyncSignal;
  using Message = pb::BlockStateSync;
  using State = BlockState;
  using Converter = BlockStateConverter;
  static constexpr const char* kName = "block";
  static constexpr auto& kMake = BlockStates;
  static std::map<zorid_t, BlockState>& Map(Signal& signal) { return signal.blockStates; }
  static void SetProtocol(Message& message) { message.set_blockprotocol(pb::STP); }
};

template <typename Kind>
typename Kind::Signal FilledSignal(int count) {
  typename Kind::Signal signal;
  signal.protocol = STP;
  for (const auto& [id, state] : Kind::kMake(count, Order::kSorted)) {
    Kind::Map(signal).emplace_hint(Kind::Map(signal).end(), id, state);
  }
  return signal;
}

template <typename Kind>
typename Kind::Message MessageOf(int count, Order order) {
  typename Kind::Message message;
  Kind::SetProtocol(message);
  for (const auto& [id, state] : Kind::kMake(count, order)) {
    auto& info = *message.add_intfs();
    SetOctets(id, *info.mutable_zorid());
    info.set_state(static_cast<decltype(info.state())>(state));
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
  MeasureConversion(name + "/convert", [=] {
    return [signal = FilledSignal<Kind>(count), into = destination()] {
      Message& message = into->Next();
      typename Kind::Converter().Convert(signal, message);
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
  Measure(name + "/setters", [=] {
    return [signal = FilledSignal<Kind>(count), into = destination()] {
      Message& message = into->Next();
      SetByHand(signal, message);
      Keep(message);
    };
  });
}

template <typename Kind>
void IntoEmpty(const std::string& name, int count, Order order) {
  MeasureConversion(name + "/convert", [=] {
    return [message = MessageOf<Kind>(count, order)] {
      typename Kind::Signal signal;
      typename Kind::Converter().Convert(message, signal);
      Keep(signal);
    };
  });
  Measure(name + "/map", [=] {
    return [states = Kind::kMake(count, order), order] {
      std::map<zorid_t, typename Kind::State> map;
      if (order == Order::kSorted) {
        for (const auto& [id, state] : states) map.emplace_hint(map.end(), id, state);
      } else {
        for (const auto& [id, state] : states) map[id] = state;
      }
      Keep(map);
    };
  });
}

template <typename Kind>
void IntoFilled(const std::string& name, int count, Order order) {
  MeasureConversion(name + "/convert", [=] {
    return [message = MessageOf<Kind>(count, order), signal = FilledSignal<Kind>(count)]() mutable {
      typename Kind::Converter().Convert(message, signal);
      Keep(signal);
    };
  });
  Measure(name + "/map", [=] {
    return
        [states = Kind::kMake(count, order), order, signal = FilledSignal<Kind>(count)]() mutable {
          auto& map = Kind::Map(signal);
          if (order == Order::kSorted) {
            auto next = map.begin();
            for (const auto& [id, state] : states) {
              next = std::next(map.insert_or_assign(next, id, state));
            }
          } else {
            for (const auto& [id, state] : states) map[id] = state;
          }
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
    IntoEmpty<Kind>(record + "/to_native/empty_sorted", count, Order::kSorted);
    IntoEmpty<Kind>(record + "/to_native/empty_shuffled", count, Order::kShuffled);
    IntoFilled<Kind>(record + "/to_native/filled_sorted", count, Order::kSorted);
    IntoFilled<Kind>(record + "/to_native/filled_shuffled", count, Order::kShuffled);
    MeasureRuntime<typename Kind::Message>(
        record, [count] { return MessageOf<Kind>(count, Order::kSorted); });
  }
}

}  // namespace

void RegisterStateCases() {
  Register<Shut>();
  Register<Block>();
}

}  // namespace zorl2_bench
