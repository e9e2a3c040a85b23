// Checks and converts the records of a stream and counts what they contain.
#pragma once

#include <google/protobuf/message.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/entry_counts.h"
#include "tools/model/filter.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

// What becomes of one record.
enum class RecordOutcome {
  kGood,        // It converts.
  kMalformed,   // It is not a message of the type.
  kIncomplete,  // A required field is missing.
  kRejected,    // A converter rejects it.
};

inline constexpr std::size_t kRecordOutcomes = 4;

const char* OutcomeName(RecordOutcome outcome);

class RecordCounter {
 public:
  // Counts what the filter selects. It must remain valid.
  RecordCounter(const google::protobuf::Descriptor& type, Filter* filter);

  // Checks, converts and counts the next record. For a record that is not good, *problem has the
  // reason and its offset in the record. Returns nothing if the filter does not select the record;
  // bytes that are no message cannot be filtered.
  std::optional<RecordOutcome> Take(std::string_view record, Problem* problem);

  // How many native records were made and converted back to messages.
  std::uint64_t conversions() const { return conversions_; }
  // What the good records contain and what their conversion changes, without empty sections.
  std::vector<CountSection> Sections() const;

 private:
  void Convert(std::string_view record);

  std::unique_ptr<google::protobuf::Message> message_;
  std::unique_ptr<google::protobuf::Message> back_;
  Filter* filter_;
  std::string bytes_;
  std::string selected_;
  std::uint64_t conversions_ = 0;
  EntryCounts counts_;
  // By kind and path without indices; the schema bounds how many there are.
  std::map<std::string, std::uint64_t> losses_;
};

}  // namespace zorl2_inspect
