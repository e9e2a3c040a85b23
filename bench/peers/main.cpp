// Compares ways to turn a list of native records into bytes and back, and prints a Markdown table.
//
// Every peer does the whole job on the same records: encode reads native records; decode overwrites
// native records, with the converter or with IntfEntryBuilder. The peers take turns in each round,
// so that other programs of the machine affect all of them.
#include <google/protobuf/util/json_util.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <future>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>

#include "bench/peers/peer.h"
#include "convert/intf_entry_converter.h"

namespace zorl2_peers {

namespace {

struct Way {
  const char* name;
  std::unique_ptr<Peer> (*make)();
  bool wireFormat = false;  // Writes the bytes that this library writes.
};

const Way kWays[] = {
    {"this library", MakeLibrary, true},
    {"protobuf runtime alone, no native record", MakeRuntime, true},
    {"IntfEntryBuilder alone, no bytes", MakeBuilder},
    {"protobuf reflection", MakeReflection, true},
    {"protozero", MakeProtozero, true},
    {"FlatBuffers, object API", MakeFlatBuffers},
    {"Cap'n Proto", MakeCapnProto},
    {"MessagePack", MakeMsgpack},
    {"cereal, binary", MakeCereal},
    {"Boost.Serialization, binary", MakeBoost},
    {"bytes by hand", MakeByHand},
};

// The cost of one direction: the times of all rounds in microseconds, and the allocations.
struct Cost {
  std::vector<double> times;
  double allocations = 0;

  double Least() const { return *std::min_element(times.begin(), times.end()); }
  double Median() const {
    std::vector<double> sorted = times;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }
};

struct Candidate {
  const Way* way;
  std::unique_ptr<Peer> peer;
  std::size_t bytes = 0;
  Records decoded = {};
  Cost encode = {};
  Cost decode = {};
};

Records Load(const char* path) {
  std::ifstream file(path);
  const std::string json((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  zorl2::protobuf::IntfEntryList list;
  const auto status = google::protobuf::util::JsonStringToMessage(json, &list);
  if (!file || !status.ok()) throw std::runtime_error(std::string(path) + ": not an IntfEntryList");
  Records records(static_cast<std::size_t>(list.intfentry_size()));
  IntfEntryConverter converter;
  for (int i = 0; i < list.intfentry_size(); ++i) {
    converter.Convert(list.intfentry(i), records[static_cast<std::size_t>(i)]);
  }
  if (records.empty()) throw std::runtime_error(std::string(path) + ": no entries");
  return records;
}

// Throws unless the peer reproduces the records, from which this library then makes the same bytes.
void Check(Candidate& candidate, const Records& records, const std::string& expected) {
  const std::string name = candidate.way->name;
  const std::string_view bytes = candidate.peer->Encode(records);
  if (candidate.way->wireFormat && bytes != expected) {
    throw std::runtime_error(name + ": the bytes differ from those of this library");
  }
  candidate.bytes = bytes.size();
  candidate.peer->Decode(bytes, candidate.decoded);
  candidate.peer->Collect(candidate.decoded);
  const auto library = MakeLibrary();
  if (library->Encode(candidate.decoded) != expected) {
    throw std::runtime_error(name + ": the round trip changes the records");
  }
}

template <typename Operation>
void Measure(Cost& cost, Operation operation) {
  constexpr int kOperations = 20;
  using Clock = std::chrono::steady_clock;
  const std::uint64_t before = AllocationsOfThisThread();
  const Clock::time_point start = Clock::now();
  for (int i = 0; i < kOperations; ++i) operation();
  const std::chrono::duration<double, std::micro> time = Clock::now() - start;
  cost.allocations = static_cast<double>(AllocationsOfThisThread() - before) / kOperations;
  cost.times.push_back(time.count() / kOperations);
}

void Print(const std::vector<Candidate>& candidates, std::size_t records, int rounds) {
  std::printf(
      "| way | encode, µs | decode, µs | both, this library = 1 | allocations, encode | "
      "allocations, decode | bytes |\n|---|---:|---:|---:|---:|---:|---:|\n");
  const auto both = [](const Candidate& one) { return one.encode.Least() + one.decode.Least(); };
  double highest = 0;
  for (const Candidate& one : candidates) {
    std::printf("| %s | %.1f | %.1f | %.2f | %g | %g | %zu |\n", one.way->name, one.encode.Least(),
                one.decode.Least(), both(one) / both(candidates.front()), one.encode.allocations,
                one.decode.allocations, one.bytes);
    for (const Cost* cost : {&one.encode, &one.decode}) {
      highest = std::max(highest, cost->Median() / cost->Least() - 1);
    }
  }
  std::printf(
      "\n%zu records, %d rounds. Each time is the minimum of the rounds; the median is at "
      "most %.0f %% higher.\n",
      records, rounds, highest * 100);
}

void Run(const char* path, int rounds) {
  const Records records = Load(path);
  const auto library = MakeLibrary();
  const std::string expected(library->Encode(records));
  std::vector<Candidate> candidates;
  for (const Way& way : kWays) {
    Candidate& one = candidates.emplace_back(Candidate{&way, way.make()});
    one.peer->Prepare(records);
    Check(one, records, expected);
  }
  for (int round = 0; round < rounds; ++round) {
    for (Candidate& one : candidates) {
      std::string_view bytes;
      Measure(one.encode, [&] { bytes = one.peer->Encode(records); });
      Measure(one.decode, [&] { one.peer->Decode(bytes, one.decoded); });
    }
  }
  // Reused buffers keep nothing of earlier calls.
  for (Candidate& one : candidates) Check(one, records, expected);
  Print(candidates, records.size(), rounds);
}

}  // namespace

}  // namespace zorl2_peers

int main(int argc, char** argv) {
  const int rounds = argc == 3 ? std::atoi(argv[2]) : 0;
  if (rounds < 1) {
    std::fprintf(stderr, "usage: zorl2_bench_peers IntfEntryList.json ROUNDS\n");
    return 2;
  }
  // A second thread exists, as in a manager: without one the C library's heap uses no lock.
  std::promise<void> measured;
  std::thread idle([done = measured.get_future()] { done.wait(); });
  int result = 0;
  try {
    zorl2_peers::Run(argv[1], rounds);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zorl2_bench_peers: %s\n", error.what());
    result = 1;
  }
  measured.set_value();
  idle.join();
  return result;
}
