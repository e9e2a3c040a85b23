// Not installed. Merges the states of a message into the map of a signal while the message is
// tested: where a pass of its own for the test costs more than what is taken back now and then.
//
// Fill, ReplaceFew and MergeLarge return false, with the states as they were, for a message that
// lacks a field or has a malformed identifier, and for others that they are not made for.
// std::bad_alloc leaves them with the interfaces before it merged, and only when the message lacks
// nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <new>
#include <utility>

#include "convert/enum_mapping.h"
#include "convert/large_message.h"
#include "convert/state_merge.h"
#include "convert/zorid_mapping.h"
#include "intf_state.pb.h"
#include "native/l2_enums.h"
#include "native/zorid.h"

namespace zorl2_mapping {

// False for an interface that lacks a field or has a malformed identifier. One that is missing is
// malformed too: it reads as one without values.
template <typename Info>
bool ReadZorid(const Info& info, zorid_t& id) {
  return info.has_state() && ToNative(info.zorid(), id);
}

inline bool StateOf(const zorl2::protobuf::ShutStateInfo& info) { return info.state(); }
inline BlockState StateOf(const zorl2::protobuf::BlockStateInfo& info) {
  return ToNative(info.state());
}

// Fills a map that is empty. A peer sends the interfaces in ascending order, so each that is above
// those before it is put at the end.
template <typename Message, typename State>
bool Fill(const Message& message, std::map<zorid_t, State>& states) try {
  std::uint64_t least = 0;
  for (const auto& info : message.intfs()) {
    zorid_t id;
    if (!ReadZorid(info, id)) {
      states.clear();
      return false;
    }
    const std::uint32_t number = ZoridNumber(id);
    if (number >= least) {
      states.emplace_hint(states.end(), id, StateOf(info));
      least = std::uint64_t{number} + 1;
    } else {
      states[id] = StateOf(info);
    }
  }
  return true;
} catch (const std::bad_alloc&) {
  if (message.IsInitialized()) throw;
  states.clear();
  return false;
}

// The state that is held for an interface; null when none is, or ReadZorid() is false.
template <typename Info, typename State>
State* FindHeld(const Info& info, std::map<zorid_t, State>& states) {
  zorid_t id;
  if (!ReadZorid(info, id)) return nullptr;
  const auto held = states.find(id);
  return held == states.end() ? nullptr : &held->second;
}

// Replaces the states of up to 16 interfaces that are held, all of them. For so few, looking for
// each behind the one before it costs more than it saves.
template <typename Message, typename State>
bool ReplaceFew(const Message& message, std::map<zorid_t, State>& states) {
  struct Replaced {
    State* held;
    State before;
  };
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): each is written before it is read.
  std::array<Replaced, 16> replaced;
  if (static_cast<std::size_t>(message.intfs_size()) > replaced.size()) return false;
  Replaced* end = replaced.data();
  for (const auto& info : message.intfs()) {
    State* const held = FindHeld(info, states);
    if (held == nullptr) {
      while (end != replaced.data()) {
        --end;
        *end->held = end->before;
      }
      return false;
    }
    *end++ = {held, *held};
    *held = StateOf(info);
  }
  return true;
}

// Takes a merge back in its destructor, unless it is to be kept: remembers what it changed, which
// for most signals is little.
template <typename State>
class MergeLog {
 public:
  explicit MergeLog(std::map<zorid_t, State>& states) : states_(states) {}
  ~MergeLog() {
    while (count_ != 0) TakeBack(changes_[--count_]);
  }
  MergeLog(const MergeLog&) = delete;
  MergeLog& operator=(const MergeLog&) = delete;

  bool IsFull() const { return count_ == changes_.size(); }

  // Nothing is remembered or taken back any more.
  void Keep() {
    remembers_ = false;
    count_ = 0;
  }

  void Inserted(const zorid_t& id) {
    if (remembers_) changes_[count_++] = {id, true};
  }
  void Replaced(const zorid_t& id, State before, State now) {
    if (remembers_ && before != now) changes_[count_++] = {id, false, before};
  }

 private:
  struct Change {
    zorid_t id;
    bool inserted = false;
    State before = {};
  };

  void TakeBack(const Change& change) {
    if (change.inserted) {
      states_.erase(change.id);
    } else {
      states_.find(change.id)->second = change.before;
    }
  }

  std::map<zorid_t, State>& states_;
  bool remembers_ = true;
  std::size_t count_ = 0;
  std::array<Change, 256> changes_;
};

// Merges a message that is larger than the processor's caches: two passes would fetch it from
// memory twice.
template <typename Message, typename State>
bool MergeLarge(const Message& message, std::map<zorid_t, State>& states) {
  MergeLog<State> log(states);
  StateMerge<State, MergeLog<State>&> merge(states, log);
  for (const auto& info : message.intfs()) {
    zorid_t id;
    if (!ReadZorid(info, id)) return false;
    if (log.IsFull()) {
      if (!message.IsInitialized()) return false;
      log.Keep();
    }
    try {
      merge.Set(id, StateOf(info));
    } catch (const std::bad_alloc&) {
      if (!message.IsInitialized()) return false;
      log.Keep();
      throw;
    }
  }
  log.Keep();
  return true;
}

// Sets the protocol and merges the states. False when no way is made for the message; protocol and
// states are then as they were.
template <typename Message, typename State>
bool MergeInOnePass(const Message& message, ProtocolType type, ProtocolType& protocol,
                    std::map<zorid_t, State>& states) {
  const ProtocolType before = std::exchange(protocol, type);
  const bool merged = states.empty()     ? Fill(message, states)
                      : IsLarge(message) ? MergeLarge(message, states)
                                         : ReplaceFew(message, states);
  if (!merged) protocol = before;
  return merged;
}

}  // namespace zorl2_mapping
