// Not installed. Merges the states of a message into the map of a signal.
#pragma once

#include <iterator>
#include <map>

#include "native/zorid.h"

namespace zorl2_mapping {

// Sets states one after the other. A peer sends them in ascending order, so the place right behind
// the last one is tried first: sorted states cost constant time each, others a descent.
template <typename State>
class StateMerge {
 public:
  explicit StateMerge(std::map<zorid_t, State>& states) : states_(states), next_(states.begin()) {}

  void Set(const zorid_t& id, State state) {
    const bool appending = next_ == states_.end();
    const auto place = states_.insert_or_assign(next_, id, state);
    // Behind the last entry the place stays the end: stepping there from the last entry would
    // climb the whole tree.
    if (!appending || place != std::prev(states_.end())) next_ = std::next(place);
  }

 private:
  std::map<zorid_t, State>& states_;
  typename std::map<zorid_t, State>::iterator next_;
};

}  // namespace zorl2_mapping
