// Not installed. Merges the states of a message into the map of a signal.
#pragma once

#include <cstdint>
#include <iterator>
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
    ascending_ = ascending_ && number >= least_;
    if (!ascending_) {
      states_[id] = state;
      return;
    }
    least_ = std::uint64_t{number} + 1;
    if (next_ == states_.end()) {
      // Behind every other; the next one can only go behind this one.
      states_.emplace_hint(next_, id, state);
    } else if (next_->first == id) {
      next_->second = state;
      ++next_;
    } else {
      next_ = std::next(states_.insert_or_assign(next_, id, state));
    }
  }

 private:
  std::map<zorid_t, State>& states_;
  // The entry behind the one set last. All before it are below least_.
  typename std::map<zorid_t, State>::iterator next_;
  std::uint64_t least_ = 0;
  bool ascending_ = true;
};

}  // namespace zorl2_mapping
