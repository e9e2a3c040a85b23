// Not installed. Merges the states of a message into the map of a signal.
#pragma once

#include <cstdint>
#include <iterator>
#include <limits>
#include <map>

#include "native/zorid.h"

namespace zorl2_mapping {

// For a merge that nobody takes back.
struct NoLog {
  void Inserted(const zorid_t&) {}
  template <typename State>
  void Replaced(const zorid_t&, State, State) {}
};

// Sets states one after the other. A peer sends them in ascending order, so each is looked for
// right behind the one before it, in constant time. The first one out of order, or named twice,
// ends that: it and the rest are looked up from the top. The log hears of each entry that is
// inserted, or replaced: its identifier, the state before and the state now.
template <typename State, typename Log = NoLog>
class StateMerge {
 public:
  explicit StateMerge(std::map<zorid_t, State>& states, Log log = {})
      : states_(states), log_(log), next_(states.begin()) {}

  void Set(const zorid_t& id, State state) {
    const std::uint32_t number = ZoridNumber(id);
    if (number < least_) {
      least_ = kOutOfOrder;
      SetAt(states_, log_, states_.lower_bound(id), id, state);
      return;
    }
    least_ = std::uint64_t{number} + 1;
    if (next_ != states_.end() && next_->first == id) {
      log_.Replaced(id, next_->second, state);
      next_->second = state;
      ++next_;
    } else {
      next_ = SetElsewhere(states_, log_, next_, id, state);
    }
  }

 private:
  using Map = std::map<zorid_t, State>;
  using Iterator = typename Map::iterator;

  // Above every identifier's number.
  static constexpr std::uint64_t kOutOfOrder = std::numeric_limits<std::uint64_t>::max();

  // Sets an entry that is not `next`, given that all before `next` are below it. Returns the entry
  // behind it. A function of its own, so that the loop over the entries that are there stays small.
  [[gnu::noinline]] static Iterator SetElsewhere(Map& states, Log log, Iterator next, zorid_t id,
                                                 State state) {
    if (next != states.end() && next->first < id) next = states.lower_bound(id);
    return SetAt(states, log, next, id, state);
  }

  // Sets an entry, given the first that is not below it. Returns the entry behind it.
  static Iterator SetAt(Map& states, Log log, Iterator at, const zorid_t& id, State state) {
    if (at != states.end() && at->first == id) {
      log.Replaced(id, at->second, state);
      at->second = state;
      return std::next(at);
    }
    states.emplace_hint(at, id, state);
    log.Inserted(id);
    return at;
  }

  Map& states_;
  Log log_;
  // The entry behind the one set last. All before it are below least_.
  Iterator next_;
  std::uint64_t least_ = 0;
};

}  // namespace zorl2_mapping
