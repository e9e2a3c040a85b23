// What the conversion to native records and back loses.
#pragma once

#include <google/protobuf/message.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/check.h"
#include "tools/text/colours.h"
#include "tools/text/error.h"
#include "tools/text/json_writer.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

// One record and what its conversion does.
struct RoundTripRecord {
  std::uint64_t number = 0;
  // Where it begins; nothing if it is not from a binary form.
  std::optional<std::uint64_t> offset;
  std::string_view bytes;
  const google::protobuf::Message* message = nullptr;
  std::vector<zorl2::check::Verdict> rejections;
  std::vector<zorl2::check::Loss> losses;
};

struct RoundTripSummary {
  std::string what;   // "IntfEntry" or "3 records".
  std::string notes;  // Such as "; no native record, only parsed".
  std::uint64_t records = 0;
  std::uint64_t records_with_losses = 0;
  std::uint64_t losses = 0;
  std::uint64_t rejected_records = 0;
  std::uint64_t malformed_records = 0;
  // How many native records were timed, and how long each of them took both ways.
  std::uint64_t timed_records = 0;
  double microseconds = 0;
};

// Prints the differences of each record when it is reported, and the summary at the end.
class RoundTripView {
 public:
  RoundTripView(Output& out, const Palette& palette, bool as_json);

  void Begin(const std::string& name, const std::string& type, bool is_stream);
  void Report(const RoundTripRecord& record);
  // Why a record is no message. The caller has reported it to a person.
  void Damage(std::uint64_t number, std::optional<std::uint64_t> offset, const Problem& problem);
  void Finish(const RoundTripSummary& summary);

 private:
  // Such as "2 records rejected, 3 differences in 1 records".
  std::string Result(const RoundTripSummary& summary) const;

  void ReportText(const RoundTripRecord& record);
  void ReportJson(const RoundTripRecord& record);
  void BeginDifference(std::uint64_t number, std::optional<std::uint64_t> offset);

  Output& out_;
  Palette palette_;
  bool as_json_;
  bool is_stream_ = false;
  JsonWriter json_;
  std::string name_;
};

}  // namespace zorl2_inspect
