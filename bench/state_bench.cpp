// Both state signals, by size and order.
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/floors.h"
#include "bench/measure.h"
#include "convert/intf_state_converter.h"

namespace zorl2_bench {

namespace {

// How both floors read one state, from a message and from a pair.
template <typename Info, typename State>
struct Element {
  static zorid_t Id(const Info& info) {
    zorid_t id;
    GetOctets(info.zorid(), id);
    return id;
  }
  static State StateOf(const Info& info) { return static_cast<State>(info.state()); }
  static const zorid_t& Id(const std::pair<zorid_t, State>& pair) { return pair.first; }
  static State StateOf(const std::pair<zorid_t, State>& pair) { return pair.second; }
};

struct Shut : Element<pb::ShutStateInfo, bool> {
  using Signal = ShutStateInfoSyncSignal;
  using Message = pb::ShutStateSync;
  using Converter = ShutStateConverter;
  static constexpr const char* kName = "shut";
  static constexpr auto& kMake = ShutStates;
  static std::map<zorid_t, bool>& Map(Signal& signal) { return signal.shutStates; }
  static void SetProtocol(Message& message) { message.set_shutprotocol(pb::STP); }
};

struct Block : Element<pb::BlockStateInfo, BlockState> {
  using Signal = BlockStateInfoSyncSignal;
  using Message = pb::BlockStateSync;
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
  MeasureWithThreads(name + "/convert", [=] {
    return [converter = typename Kind::Converter(), signal = FilledSignal<Kind>(count),
            into = destination()]() mutable {
      Message& message = into->Next();
      converter.Convert(signal, message);
      Keep(message);
    };
  });
  MeasureWithThreads(name + "/copy", [=] {
    return [source = MessageOf<Kind>(count, Order::kSorted), into = destination()] {
      Message& message = into->Next();
      message.CopyFrom(source);
      Keep(message);
    };
  });
  MeasureWithThreads(name + "/setters", [=] {
    return [signal = FilledSignal<Kind>(count), into = destination()] {
      Message& message = into->Next();
      SetByHand(signal, message);
      Keep(message);
    };
  });
}

// Builds or updates the map by hand: with hints when the states come in ascending order.
template <typename Kind, typename Map, typename States>
[[gnu::noinline]] void MergeByHand(const States& states, Order order, Map& map) {
  if (order == Order::kShuffled) {
    for (const auto& element : states) map[Kind::Id(element)] = Kind::StateOf(element);
  } else if (map.empty()) {
    for (const auto& element : states) {
      map.emplace_hint(map.end(), Kind::Id(element), Kind::StateOf(element));
    }
  } else {
    auto next = map.begin();
    for (const auto& element : states) {
      next = std::next(map.insert_or_assign(next, Kind::Id(element), Kind::StateOf(element)));
    }
  }
}

// A conversion beside two floors: `walk` takes the states from the message as the conversion does,
// `map` from a vector of pairs, which is a tenth of the size.
template <typename Kind>
void IntoEmpty(const std::string& name, int count, Order order) {
  using Signal = typename Kind::Signal;
  MeasureWithThreads(name + "/convert", [=] {
    return [converter = typename Kind::Converter(),
            message = MessageOf<Kind>(count, order)]() mutable {
      Signal signal;
      converter.Convert(message, signal);
      Keep(signal);
    };
  });
  MeasureWithThreads(name + "/walk", [=] {
    return [message = MessageOf<Kind>(count, order), order] {
      Signal signal;
      MergeByHand<Kind>(message.intfs(), order, Kind::Map(signal));
      Keep(signal);
    };
  });
  Measure(name + "/map", [=] {
    return [states = Kind::kMake(count, order), order] {
      Signal signal;
      MergeByHand<Kind>(states, order, Kind::Map(signal));
      Keep(signal);
    };
  });
}

template <typename Kind>
void IntoFilled(const std::string& name, int count, Order order) {
  MeasureWithThreads(name + "/convert", [=] {
    return [converter = typename Kind::Converter(), message = MessageOf<Kind>(count, order),
            signal = FilledSignal<Kind>(count)]() mutable {
      converter.Convert(message, signal);
      Keep(signal);
    };
  });
  MeasureWithThreads(name + "/walk", [=] {
    return [message = MessageOf<Kind>(count, order), order,
            signal = FilledSignal<Kind>(count)]() mutable {
      MergeByHand<Kind>(message.intfs(), order, Kind::Map(signal));
      Keep(signal);
    };
  });
  Measure(name + "/map", [=] {
    return
        [states = Kind::kMake(count, order), order, signal = FilledSignal<Kind>(count)]() mutable {
          MergeByHand<Kind>(states, order, Kind::Map(signal));
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
