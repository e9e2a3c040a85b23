// Not installed. Messages of signals that are larger than the processor's caches are written over
// in one pass. Two of them, the first to clear, need fewer instructions and do for smaller ones,
// but would fetch such a message from memory twice.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

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

}  // namespace zorl2_mapping
