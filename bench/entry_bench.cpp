// Interface entries: one alone, and a batch larger than the caches.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/floors.h"
#include "bench/measure.h"
#include "convert/intf_entry_converter.h"

namespace zorl2_bench {

namespace {

pb::IntfEntry Message(std::uint32_t number) {
  pb::IntfEntry message;
  SetByHand(Entry(number), message);
  return message;
}

template <template <typename> class Destination>
void ToMessage(const std::string& name) {
  MeasureWithThreads(name + "/convert", [] {
    return [converter = IntfEntryConverter(), entry = Entry(1),
            into = std::make_unique<Destination<pb::IntfEntry>>()]() mutable {
      pb::IntfEntry& message = into->Next();
      converter.Convert(entry, message);
      Keep(message);
    };
  });
  MeasureWithThreads(name + "/copy", [] {
    return [source = Message(1), into = std::make_unique<Destination<pb::IntfEntry>>()] {
      pb::IntfEntry& message = into->Next();
      message.CopyFrom(source);
      Keep(message);
    };
  });
  Measure(name + "/setters", [] {
    return [entry = Entry(1), into = std::make_unique<Destination<pb::IntfEntry>>()] {
      pb::IntfEntry& message = into->Next();
      SetByHand(entry, message);
      Keep(message);
    };
  });
}

void ToNative() {
  MeasureWithThreads("entry/to_native/reused/convert", [] {
    return [converter = IntfEntryConverter(), message = Message(1), entry = IntfEntry()]() mutable {
      converter.Convert(message, entry);
      Keep(entry);
    };
  });
  MeasureWithThreads("entry/to_native/reused/getters", [] {
    return [message = Message(1), entry = PlainEntry()]() mutable {
      GetByHand(message, entry);
      Keep(entry);
    };
  });
  MeasureWithThreads("entry/to_native/fresh/convert", [] {
    return [converter = IntfEntryConverter(), message = Message(1)]() mutable {
      IntfEntry entry;
      converter.Convert(message, entry);
      Keep(entry);
    };
  });
  MeasureWithThreads("entry/to_native/fresh/getters", [] {
    return [message = Message(1)] {
      PlainEntry entry;
      GetByHand(message, entry);
      Keep(entry);
    };
  });
}

// One pass over 1,000 different entries, each with a destination of its own.
constexpr std::uint32_t kBatch = 1000;

template <typename Source, typename Destination, typename Make, typename Step>
auto Batch(Make make, Step step) {
  std::vector<Source> sources;
  for (std::uint32_t i = 0; i < kBatch; ++i) sources.push_back(make(i));
  return [sources = std::move(sources), destinations = std::vector<Destination>(kBatch),
          step]() mutable {
    for (std::size_t i = 0; i < kBatch; ++i) step(sources[i], destinations[i]);
    Keep(destinations);
  };
}

void Batches() {
  MeasureWithThreads("batch/to_message/reused/convert", [] {
    return Batch<IntfEntry, pb::IntfEntry>(
        Entry,
        [converter = IntfEntryConverter()](const IntfEntry& from, pb::IntfEntry& to) mutable {
          converter.Convert(from, to);
        });
  });
  MeasureWithThreads("batch/to_message/reused/copy", [] {
    return Batch<pb::IntfEntry, pb::IntfEntry>(
        Message, [](const pb::IntfEntry& from, pb::IntfEntry& to) { to.CopyFrom(from); });
  });
  Measure("batch/to_message/reused/setters", [] {
    return Batch<IntfEntry, pb::IntfEntry>(
        Entry, [](const IntfEntry& from, pb::IntfEntry& to) { SetByHand(from, to); });
  });
  MeasureWithThreads("batch/to_native/reused/convert", [] {
    return Batch<pb::IntfEntry, IntfEntry>(
        Message,
        [converter = IntfEntryConverter()](const pb::IntfEntry& from, IntfEntry& to) mutable {
          converter.Convert(from, to);
        });
  });
  MeasureWithThreads("batch/to_native/reused/getters", [] {
    return Batch<pb::IntfEntry, PlainEntry>(
        Message, [](const pb::IntfEntry& from, PlainEntry& to) { GetByHand(from, to); });
  });
}

}  // namespace

void RegisterEntryCases() {
  ToMessage<Reused>("entry/to_message/reused");
  ToMessage<Fresh>("entry/to_message/fresh");
  ToMessage<OnArena>("entry/to_message/arena");
  ToNative();
  MeasureRuntime<pb::IntfEntry>("entry", [] { return Message(1); });
  Batches();
}

}  // namespace zorl2_bench
