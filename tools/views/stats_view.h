// The report on a stream of records.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/model/record_counter.h"
#include "tools/text/error.h"
#include "tools/text/json_writer.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

// How many records there were and how large they are. Sizes are counted by powers of two, so that
// the summary needs the same memory for any stream.
struct RecordSummary {
  void Add(std::size_t size) {
    ++records;
    bytes += size;
    if (size < smallest) smallest = size;
    if (size > largest) largest = size;
    ++by_magnitude[Magnitude(size)];
  }

  // The number of bits of the size; 0 for size 0.
  static std::size_t Magnitude(std::size_t size) {
    return size == 0 ? 0 : 64 - static_cast<std::size_t>(__builtin_clzll(size));
  }

  std::uint64_t records = 0;
  std::uint64_t bytes = 0;
  std::uint64_t smallest = static_cast<std::uint64_t>(-1);
  std::uint64_t largest = 0;
  std::array<std::uint64_t, 65> by_magnitude = {};
  // By RecordOutcome. A record that was skipped because of its length is malformed.
  std::array<std::uint64_t, kRecordOutcomes> outcomes = {};
  // Records of which a filter selects nothing. `records` does not include them.
  std::uint64_t left_out = 0;
  std::uint64_t conversions = 0;
  double seconds = 0;
};

// A record that is not good.
struct BadRecord {
  std::uint64_t number = 0;
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  RecordOutcome outcome = RecordOutcome::kMalformed;
  Problem problem;
};

// Prints bad records as they come, and everything else at the end.
class StatsView {
 public:
  // Lists the first `listed` bad records.
  StatsView(Output& out, bool as_json, std::uint64_t listed);

  void Begin(const std::string& name, const std::string& type);
  void Bad(const BadRecord& bad);
  // `broken` is why the stream cannot be read to its end, if it cannot.
  void End(const RecordSummary& summary, const std::vector<CountSection>& sections,
           const std::optional<Problem>& broken);

 private:
  void EndText(const RecordSummary& summary, const std::vector<CountSection>& sections);
  void EndJson(const RecordSummary& summary, const std::vector<CountSection>& sections,
               const std::optional<Problem>& broken);

  Output& out_;
  bool as_json_;
  std::uint64_t listed_;
  std::uint64_t bad_ = 0;
  JsonWriter json_;
};

}  // namespace zorl2_inspect
