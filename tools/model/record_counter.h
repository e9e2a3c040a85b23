// Checks and converts the records of a stream and counts what they contain.
#pragma once

#include <google/protobuf/message.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/entry_counts.h"
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
  explicit RecordCounter(const google::protobuf::Descriptor& type);

  // Takes the next record. Unless it is good, *problem has the reason and its offset in the record.
  RecordOutcome Take(std::string_view record, Problem* problem);

  // How many native records were made and converted back to messages.
  std::uint64_t conversions() const { return conversions_; }
  // What the good records contain and what their conversion changes, without empty sections.
  std::vector<CountSection> Sections() const;

 private:
  void Convert(std::string_view record);

  std::unique_ptr<google::protobuf::Message> message_;
  std::unique_ptr<google::protobuf::Message> back_;
  std::string bytes_;
  std::uint64_t conversions_ = 0;
  EntryCounts counts_;
  // By kind and path without indices; the schema bounds how many there are.
  std::map<std::string, std::uint64_t> losses_;
};

}  // namespace zorl2_inspect
