// Interface entries: one alone, from bytes, and a batch larger than the caches.
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
  IntfEntryConverter().Convert(Entry(number), message);
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
  Measure(name + "/copy", [] {
    return [source = Message(1), into = std::make_unique<Destination<pb::IntfEntry>>()] {
      pb::IntfEntry& message = into->Next();
      message.CopyFrom(source);
      Keep(message);
    };
  });
}

void ToNative() {
  MeasureWithThreads("entry/to_native/used/convert", [] {
    return [converter = IntfEntryConverter(), message = Message(1), entry = IntfEntry()]() mutable {
      converter.Convert(message, entry);
      Keep(entry);
    };
  });
  Measure("entry/to_native/used/assign", [] {
    return [source = Entry(1), entry = IntfEntry()]() mutable {
      entry = source;
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
  Measure("entry/to_native/fresh/getters", [] {
    return [message = Message(1)] {
      PlainEntry entry;
      GetByHand(message, entry);
      Keep(entry);
    };
  });
  Measure("entry/from_bytes/used/convert", [] {
    return [bytes = Message(1).SerializeAsString(), message = pb::IntfEntry(),
            converter = IntfEntryConverter(), entry = IntfEntry()]() mutable {
      message.ParseFromString(bytes);
      converter.Convert(message, entry);
      Keep(entry);
    };
  });
  Measure("entry/from_bytes/used/parse", [] {
    return [bytes = Message(1).SerializeAsString(), message = pb::IntfEntry()]() mutable {
      message.ParseFromString(bytes);
      Keep(message);
    };
  });
}

// Converts 1,000 different entries once, each into a destination of its own.
constexpr std::uint32_t kBatch = 10000;

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
  Measure("batch/to_message/reused/copy", [] {
    return Batch<pb::IntfEntry, pb::IntfEntry>(
        Message, [](const pb::IntfEntry& from, pb::IntfEntry& to) { to.CopyFrom(from); });
  });
  MeasureWithThreads("batch/to_native/used/convert", [] {
    return Batch<pb::IntfEntry, IntfEntry>(
        Message,
        [converter = IntfEntryConverter()](const pb::IntfEntry& from, IntfEntry& to) mutable {
          converter.Convert(from, to);
        });
  });
  Measure("batch/to_native/used/assign", [] {
    return Batch<IntfEntry, IntfEntry>(Entry,
                                       [](const IntfEntry& from, IntfEntry& to) { to = from; });
  });
}

}  // namespace

void RegisterEntryCases() {
  ToMessage<Reused>("entry/to_message/reused");
  ToMessage<Fresh>("entry/to_message/fresh");
  ToMessage<OnArena>("entry/to_message/arena");
  ToNative();
  Batches();
}

}  // namespace zorl2_bench
