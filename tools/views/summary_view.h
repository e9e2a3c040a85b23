// The summary of a list or stream: one screen, or JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/model/list_summary.h"
#include "tools/text/colours.h"
#include "tools/text/error.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

struct SummaryReport {
  std::string name;  // Of the input.
  std::string type;  // Of its records.
  bool is_stream = false;
  std::uint64_t records = 0;
  std::uint64_t unreadable = 0;  // Records that are no messages of the type.
  std::optional<Problem> first_unreadable;
  // Why the stream cannot be read to its end, if it cannot.
  std::optional<Problem> broken;
  bool filtered = false;
  ListSummary list;
};

// At most 24 lines of 80 characters.
void PrintSummary(const SummaryReport& report, const Palette& paint, bool utf8, Output& out);

// With names of the schema and without a limit of lines.
void PrintSummaryAsJson(const SummaryReport& report, Output& out);

}  // namespace zorl2_inspect
