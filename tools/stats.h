// Counts what a stream of length-delimited records holds.
#pragma once

#include <google/protobuf/message.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace zorl2_inspect {

struct StatsOptions {
  bool json = false;
  // How many records that are not good are listed.
  std::uint64_t listed = 20;
  // Records longer than this are skipped and counted as malformed.
  std::size_t longest = std::size_t{16} << 20;
  // The size of the stream where it is known: the progress bar needs it.
  std::uint64_t total_bytes = 0;
};

enum class StatsResult {
  kGood,    // every record is a complete message that the converters take
  kBad,     // some are not; they are listed
  kBroken,  // the stream cannot be followed to its end, or the type of its records is not known
};

// Chooses the type of all records by the first of them; null with the reason when it cannot.
using TypeChooser = std::function<const google::protobuf::Message*(std::string_view first_record,
                                                                   std::string* problem)>;

// Reads the descriptor to its end and prints the report. Memory does not grow with the stream.
// *problem says why a stream is broken.
StatsResult RunStats(int descriptor, const std::string& name, const TypeChooser& choose_type,
                     const StatsOptions& options, std::FILE* out, std::string* problem);

}  // namespace zorl2_inspect
