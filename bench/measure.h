// Measures cases, with different kinds of destination messages.
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

// Registers a case. `make()` prepares the data of one thread, without being measured, and returns
// the measured operation. Every case reports its heap allocations per operation.
template <typename Make>
benchmark::internal::Benchmark* Measure(const std::string& name, Make make) {
  return benchmark::RegisterBenchmark(name.c_str(), [make](benchmark::State& state) {
    auto operation = make();
    operation();  // Allocates the storage that the measured calls reuse.
    // Counts outside of the measurement, to keep it undisturbed.
    constexpr int kCounted = 2;
    const std::uint64_t before = AllocationsOfThisThread();
    for (int i = 0; i < kCounted; ++i) operation();
    const auto allocations = static_cast<double>(AllocationsOfThisThread() - before);
    state.counters["allocations"] =
        benchmark::Counter(allocations / kCounted, benchmark::Counter::kAvgThreads);
    for (auto _ : state) operation();
  });
}

// Registers a conversion with one and with two threads.
template <typename Make>
void MeasureWithThreads(const std::string& name, Make make) {
  Measure(name, make)->Threads(1)->Threads(2);
}

// Prevents the compiler from dropping writes to `value` and from reusing earlier reads of it.
template <typename Value>
void Keep(Value& value) {
  Value* address = &value;
  benchmark::DoNotOptimize(address);
  benchmark::ClobberMemory();
}

// The three kinds of destination. Next() returns the message to fill.

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

// A message on an arena that owns its first block and is reset before each use.
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
