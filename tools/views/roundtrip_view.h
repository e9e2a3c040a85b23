// What the conversion to native records and back loses.
#pragma once

#include <cstdint>
#include <string>

#include "check/check.h"
#include "tools/text/colours.h"
#include "tools/text/json_writer.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

struct RoundTripSummary {
  std::string name;   // Of the input.
  std::string what;   // "IntfEntry" or "3 records".
  std::string notes;  // Such as "; no native record, only parsed".
  std::uint64_t records = 0;
  std::uint64_t records_with_losses = 0;
  std::uint64_t losses = 0;
  std::uint64_t rejected_records = 0;
  // How many native records were timed, and how long each of them took both ways.
  std::uint64_t timed_records = 0;
  double microseconds = 0;
  bool is_stream = false;
};

// Prints each loss when it is reported, and the summary at the end.
class RoundTripView {
 public:
  RoundTripView(Output& out, const Palette& palette, bool as_json);

  // `where` is "record 3, offset 0x91f: " in a stream.
  void Report(std::uint64_t record, const std::string& where, const zorl2::check::Loss& loss);
  // Why an element does not convert.
  void Reject(std::uint64_t record, const std::string& where, const zorl2::check::Verdict& verdict);
  void Finish(const RoundTripSummary& summary);

 private:
  // Such as "2 records rejected, 3 differences in 1 records".
  std::string Result(const RoundTripSummary& summary) const;

  // A number, a text, or null for an absent value.
  void WriteValue(const char* name, const std::string& text);

  Output& out_;
  Palette palette_;
  bool as_json_;
  JsonWriter json_;
};

}  // namespace zorl2_inspect
