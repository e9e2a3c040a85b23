// Not installed. Merges the states of a message into the map of a signal.
#pragma once

#include <cstdint>
#include <iterator>
#include <limits>
#include <map>

#include "native/zorid.h"

namespace zorl2_mapping {

// Sets states one after the other. A peer sends them in ascending order, so each is looked for
// right behind the one before it, in constant time. The first one out of order, or named twice,
// ends that: it and the rest are looked up from the top.
template <typename State>
class StateMerge {
 public:
  explicit StateMerge(std::map<zorid_t, State>& states) : states_(states), next_(states.begin()) {}

  void Set(const zorid_t& id, State state) {
    const std::uint32_t number = ZoridNumber(id);
    if (number < least_) {
      least_ = kOutOfOrder;
      states_[id] = state;
      return;
    }
    least_ = std::uint64_t{number} + 1;
    if (next_ != states_.end() && next_->first == id) {
      next_->second = state;
      ++next_;
    } else {
      next_ = SetElsewhere(states_, next_, id, state);
    }
  }

 private:
  using Map = std::map<zorid_t, State>;
  using Iterator = typename Map::iterator;

  // Above every identifier's number.
  static constexpr std::uint64_t kOutOfOrder = std::numeric_limits<std::uint64_t>::max();

  // Sets an entry that is not `next`, given that all before `next` are below it. Returns the entry
  // behind it. A function of its own, so that the loop over the entries that are there stays small.
  [[gnu::noinline]] static Iterator SetElsewhere(Map& states, Iterator next, zorid_t id,
                                                 State state) {
    if (next != states.end() && next->first < id) next = states.lower_bound(id);
    if (next != states.end() && next->first == id) {
      next->second = state;
      return std::next(next);
    }
    states.emplace_hint(next, id, state);
    return next;
  }

  Map& states_;
  // The entry behind the one set last. All before it are below least_.
  Iterator next_;
  std::uint64_t least_ = 0;
};

}  // namespace zorl2_mapping
