// How a case is measured, and into what kinds of message.
#pragma once

#include <benchmark/benchmark.h>
#include <google/protobuf/arena.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/allocation_counter.h"

namespace zorl2_bench {

// Registers a case. `make()` prepares, unmeasured, what one thread works on and returns the
// operation that is measured. Every case reports its heap allocations per operation.
template <typename Make>
benchmark::internal::Benchmark* Measure(const std::string& name, Make make) {
  return benchmark::RegisterBenchmark(name.c_str(), [make](benchmark::State& state) {
    auto operation = make();
    operation();  // What is reused has its storage from here on.
    // Counted outside the measurement, which is left undisturbed.
    constexpr int kCounted = 2;
    const std::uint64_t before = AllocationsOfThisThread();
    for (int i = 0; i < kCounted; ++i) operation();
    const auto allocations = static_cast<double>(AllocationsOfThisThread() - before);
    state.counters["allocations"] =
        benchmark::Counter(allocations / kCounted, benchmark::Counter::kAvgThreads);
    for (auto _ : state) operation();
  });
}

// A conversion is measured with one and with two threads.
template <typename Make>
void MeasureWithThreads(const std::string& name, Make make) {
  Measure(name, make)->Threads(1)->Threads(2);
}

// The compiler may neither drop what was written to `value` nor keep what it read before.
template <typename Value>
void Keep(Value& value) {
  Value* address = &value;
  benchmark::DoNotOptimize(address);
  benchmark::ClobberMemory();
}

// The three kinds of destination. Next() gives the message to fill.

template <typename Message>
class Reused {
 public:
  explicit Reused(std::size_t = 0) {}
  Message& Next() { return message_; }

 private:
  Message message_;
};

template <typename Message>
class Fresh {
 public:
  explicit Fresh(std::size_t = 0) {}
  Message& Next() {
    message_.reset();
    return message_.emplace();
  }

 private:
  std::optional<Message> message_;
};

// On an arena that owns its first block and is reset before each use.
template <typename Message>
class OnArena {
 public:
  explicit OnArena(std::size_t block = 8192) : block_(block), arena_(block_.data(), block) {}
  Message& Next() {
    arena_.Reset();
    return *google::protobuf::Arena::CreateMessage<Message>(&arena_);
  }

 private:
  std::vector<char> block_;
  google::protobuf::Arena arena_;
};

}  // namespace zorl2_bench
