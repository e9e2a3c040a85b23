// Not installed. Messages of signals that are larger than the processor's caches. What a smaller
// one takes two passes for, since two simple loops need the fewest instructions, would fetch such a
// message from memory twice; it is done in one here.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <new>
#include <type_traits>
#include <utility>

#include "convert/enum_mapping.h"
#include "convert/state_merge.h"
#include "convert/zorid_mapping.h"
#include "intf_state.pb.h"
#include "native/l2_enums.h"
#include "native/zorid.h"

// An interface takes some 130 octets of a message, a second-level cache is 1 or 2 MB. Some tests
// take every message for a large one.
#ifndef ZORL2_LARGE_MESSAGE
#define ZORL2_LARGE_MESSAGE 16384
#endif

namespace zorl2_mapping {

template <typename Message>
bool IsLarge(const Message& message) {
  return message.intfs_size() >= ZORL2_LARGE_MESSAGE;
}

// Clears a message. The interfaces of a large one are cleared one by one, when Add() is about to
// hand them out again; those that it has not, in the destructor, after an exception too.
template <typename Message>
class Overwriting {
 public:
  explicit Overwriting(Message& message) : intfs_(*message.mutable_intfs()) {
    if (!IsLarge(message)) {
      message.Clear();
    } else {
      Intfs kept(intfs_.GetArena());
      kept.UnsafeArenaSwap(&intfs_);
      message.Clear();
      kept.UnsafeArenaSwap(&intfs_);
    }
    FindKept();
  }
  ~Overwriting() {
    for (; next_ != end_; ++next_) intfs_.RemoveLast();
  }
  Overwriting(const Overwriting&) = delete;
  Overwriting& operator=(const Overwriting&) = delete;

  // Before the first Add().
  void Reserve(std::size_t count) {
    intfs_.Reserve(static_cast<int>(count));
    FindKept();
  }

  // An empty interface, behind those added before.
  auto& Add() {
    if (next_ == end_) return *intfs_.Add();
    auto& intf = *next_;
    ++next_;
    intf.Clear();
    return intf;
  }

 private:
  using Intfs = std::remove_reference_t<decltype(*std::declval<Message&>().mutable_intfs())>;

  void FindKept() {
    next_ = intfs_.begin();
    end_ = intfs_.end();
  }

  Intfs& intfs_;
  // The interfaces of before that have not been handed out.
  typename Intfs::iterator next_;
  typename Intfs::iterator end_;
};

// Takes a merge back in its destructor, unless it is to be kept: remembers what it changed, which
// for most signals is little, or that there was nothing before.
template <typename State>
class MergeLog {
 public:
  explicit MergeLog(std::map<zorid_t, State>& states)
      : states_(states), wasEmpty_(states.empty()), remembers_(!states.empty()) {}
  ~MergeLog() {
    if (wasEmpty_) states_.clear();
    while (count_ != 0) TakeBack(changes_[--count_]);
  }
  MergeLog(const MergeLog&) = delete;
  MergeLog& operator=(const MergeLog&) = delete;

  bool IsFull() const { return count_ == changes_.size(); }

  // Nothing is remembered or taken back any more.
  void Keep() {
    wasEmpty_ = false;
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
  bool wasEmpty_;
  bool remembers_;
  std::size_t count_ = 0;
  std::array<Change, 256> changes_;
};

inline bool StateOf(const zorl2::protobuf::ShutStateInfo& info) { return info.state(); }
inline BlockState StateOf(const zorl2::protobuf::BlockStateInfo& info) {
  return ToNative(info.state());
}

// Merges the interfaces of a message, each as soon as it has been found to lack nothing. False when
// one does lack a field, and when one has a malformed identifier or memory runs out. The states are
// then as they were, unless the message lacks nothing: some may have been merged, and merging it
// from the front again, when that is known, meets the same end.
template <typename Message, typename State>
bool MergeWhileTesting(const Message& message, std::map<zorid_t, State>& states) {
  MergeLog<State> log(states);
  StateMerge<State, MergeLog<State>&> merge(states, log);
  for (const auto& info : message.intfs()) {
    zorid_t id;
    if (!info.IsInitialized() || !ToNative(info.zorid(), id)) return false;
    if (log.IsFull()) {
      if (!message.IsInitialized()) return false;
      log.Keep();
    }
    try {
      merge.Set(id, StateOf(info));
    } catch (const std::bad_alloc&) {
      if (message.IsInitialized()) log.Keep();
      return false;
    }
  }
  log.Keep();
  return true;
}

}  // namespace zorl2_mapping
