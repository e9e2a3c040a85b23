// Parses records, converts what they hold both ways, and counts what was seen.
#pragma once

#include <google/protobuf/message.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorl2_inspect {

// A heading and what was counted under it.
struct CountSection {
  std::string title;
  std::vector<std::pair<std::string, std::uint64_t>> counts;
};

class RecordCounter {
 public:
  enum class Outcome {
    kGood,
    kMalformed,   // not a message of the type
    kIncomplete,  // a required field is missing
    kRefused,     // no converter takes it
  };

  virtual ~RecordCounter() = default;

  // Takes one record. When it is not good, *problem says why; offset is where the record starts,
  // for the places in that text.
  virtual Outcome Take(std::string_view record, std::uint64_t offset, std::string* problem) = 0;

  // How many native records were made and turned back into messages.
  virtual std::uint64_t conversions() const = 0;
  // What was counted in good records, without empty sections.
  virtual std::vector<CountSection> Sections() const = 0;
};

// For records of the given type, which may be any message.
std::unique_ptr<RecordCounter> MakeRecordCounter(const google::protobuf::Message& prototype);

const char* OutcomeName(RecordCounter::Outcome outcome);

}  // namespace zorl2_inspect
