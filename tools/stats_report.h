// The report on a stream of records.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "tools/record_counter.h"

namespace zorl2_inspect {

// How many records there were and how large they are. Sizes are kept by powers of two, so that the
// summary takes the same memory for any stream.
struct RecordSummary {
  void Add(std::size_t size) {
    ++records;
    bytes += size;
    if (size < smallest) smallest = size;
    if (size > largest) largest = size;
    ++by_magnitude[Magnitude(size)];
  }

  // 0 for size 0, otherwise the number of bits that the size takes.
  static std::size_t Magnitude(std::size_t size) {
    return size == 0 ? 0 : 64 - static_cast<std::size_t>(__builtin_clzll(size));
  }

  std::uint64_t records = 0;
  std::uint64_t bytes = 0;
  std::uint64_t smallest = static_cast<std::uint64_t>(-1);
  std::uint64_t largest = 0;
  std::array<std::uint64_t, 65> by_magnitude = {};
  // By RecordCounter::Outcome; a record that was skipped for its length is malformed.
  std::array<std::uint64_t, 4> outcomes = {};
  std::uint64_t conversions = 0;
  double seconds = 0;
};

// Prints records that are not good as they come, and everything else at the end.
class StatsReport {
 public:
  StatsReport(std::FILE* out, bool json, std::uint64_t listed)
      : out_(out), json_(json), listed_(listed) {}

  void Begin(const std::string& name, const std::string& type);
  void Bad(std::uint64_t number, std::uint64_t offset, std::uint64_t size, const char* outcome,
           const std::string& problem);
  void End(const RecordSummary& summary, const std::vector<CountSection>& sections,
           const std::string& broken);

 private:
  void EndText(const RecordSummary& summary, const std::vector<CountSection>& sections);
  void EndJson(const RecordSummary& summary, const std::vector<CountSection>& sections,
               const std::string& broken);

  std::FILE* out_;
  bool json_;
  std::uint64_t listed_;
  std::uint64_t bad_ = 0;
};

// In double quotes, as JSON wants it; what is not UTF-8 becomes the replacement character.
std::string JsonQuoted(std::string_view text);

}  // namespace zorl2_inspect
