#include "tools/views/roundtrip_view.h"

#include <fmt/format.h>

#include "tools/model/check_text.h"
#include "tools/text/quoting.h"
#include "tools/views/problem_json.h"
#include "tools/views/roundtrip_values.h"
#include "tools/wire/wire_find.h"

namespace zorl2_inspect {
namespace {

using zorl2::check::Loss;
using zorl2::check::Verdict;

std::string Counted(std::uint64_t count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

// The paths of everything that is reported of a record.
std::vector<std::string> Paths(const RoundTripRecord& record) {
  std::vector<std::string> paths;
  for (const Verdict& verdict : record.rejections) paths.push_back(verdict.field);
  for (const Loss& loss : record.losses) paths.push_back(loss.field);
  return paths;
}

}  // namespace

RoundTripView::RoundTripView(Output& out, const Palette& palette, bool as_json)
    : out_(out), palette_(palette), as_json_(as_json), json_(out, JsonWriter::Layout::kIndented) {}

void RoundTripView::Begin(const std::string& name, const std::string& type, bool is_stream) {
  name_ = name;
  is_stream_ = is_stream;
  if (!as_json_) return;
  json_.BeginObject();
  json_.Member("schema", "roundtrip/1");
  json_.Member("file", name);
  json_.Member("type", type);
  json_.Key("differences");
  json_.BeginArray();
}

void RoundTripView::Report(const RoundTripRecord& record) {
  if (as_json_) {
    ReportJson(record);
  } else {
    ReportText(record);
  }
}

void RoundTripView::ReportText(const RoundTripRecord& record) {
  std::string where;
  if (is_stream_) {
    where = record.offset ? fmt::format("record {}, offset {:#x}: ", record.number, *record.offset)
                          : fmt::format("record {}: ", record.number);
  }
  for (const Verdict& verdict : record.rejections) {
    out_.Print("{}{}: {} (rejected)\n", where, palette_(Colour::kBold, verdict.field),
               palette_(Colour::kMagenta, RejectionText(verdict)));
  }
  for (const Loss& loss : record.losses) {
    out_.Print("{}{}: {} -> {} ({})\n", where, palette_(Colour::kBold, loss.field),
               palette_(Colour::kRed, BeforeText(loss)), palette_(Colour::kGreen, AfterText(loss)),
               LossKindName(loss.kind));
  }
}

void RoundTripView::BeginDifference(std::uint64_t number, std::optional<std::uint64_t> offset) {
  json_.BeginObject();
  json_.Member("record", number);
  json_.MemberOrNull("offset", offset);
}

void RoundTripView::ReportJson(const RoundTripRecord& record) {
  RoundTripValues values(*record.message);
  std::optional<FieldOffsets> offsets;
  if (record.offset) {
    offsets.emplace(record.bytes, *record.message->GetDescriptor(), Paths(record));
  }
  for (const Verdict& verdict : record.rejections) {
    Problem problem = RejectionOf(verdict);
    if (offsets) problem.offset = *record.offset + offsets->Near(verdict.field);
    BeginDifference(record.number, record.offset);
    json_.Member("path", verdict.field);
    json_.MemberOrNull("field_offset", problem.offset);
    json_.Key("old");
    values.WriteRejected(verdict.field, json_);
    json_.Key("new");
    json_.Null();
    json_.Member("reason", "rejected");
    WriteProblem("problem", problem, json_);
    json_.EndObject();
  }
  for (const Loss& loss : record.losses) {
    std::optional<std::uint64_t> offset;
    if (offsets) offset = offsets->Take(loss.field);
    if (offset) *offset += *record.offset;
    BeginDifference(record.number, record.offset);
    json_.Member("path", loss.field);
    json_.MemberOrNull("field_offset", offset);
    json_.Key("old");
    values.WriteBefore(loss, json_);
    json_.Key("new");
    values.WriteAfter(loss, json_);
    json_.Member("reason", LossKindName(loss.kind));
    WriteProblem("problem", std::nullopt, json_);
    json_.EndObject();
  }
}

void RoundTripView::Damage(std::uint64_t number, std::optional<std::uint64_t> offset,
                           const Problem& problem) {
  if (!as_json_) return;
  BeginDifference(number, offset);
  json_.MemberOrNull("path", problem.path);
  json_.MemberOrNull("field_offset", problem.offset);
  json_.Key("old");
  json_.Null();
  json_.Key("new");
  json_.Null();
  json_.Member("reason", "malformed");
  WriteProblem("problem", problem, json_);
  json_.EndObject();
}

void RoundTripView::Finish(const RoundTripSummary& summary) {
  const bool timed = summary.timed_records > 0;
  if (as_json_) {
    json_.EndArray();
    json_.Member("lossless",
                 summary.losses + summary.rejected_records + summary.malformed_records == 0);
    json_.Member("records", summary.records + summary.malformed_records);
    json_.Member("malformed", summary.malformed_records);
    json_.Member("rejected", summary.rejected_records);
    json_.MemberOrNull("native_records",
                       timed ? std::optional(summary.timed_records) : std::nullopt);
    json_.MemberOrNull("microseconds_each",
                       timed ? std::optional(summary.microseconds) : std::nullopt);
    json_.EndObject();
    return;
  }
  out_.Print("{}: {} ({}{})\n", Printable(name_), Result(summary), summary.what, summary.notes);
  if (!timed) return;
  out_.Print("{}, {:.2f} us each to native and back\n",
             Counted(summary.timed_records, "native record"), summary.microseconds);
}

std::string RoundTripView::Result(const RoundTripSummary& summary) const {
  std::string text;
  const auto append = [&](Colour colour, const std::string& part) {
    text += (text.empty() ? "" : ", ") + palette_(colour, part);
  };
  if (summary.rejected_records > 0) {
    append(Colour::kMagenta,
           is_stream_ ? Counted(summary.rejected_records, "record") + " rejected" : "rejected");
  }
  if (summary.losses > 0) {
    append(Colour::kYellow, Counted(summary.losses, "difference"));
    if (is_stream_) text += " in " + Counted(summary.records_with_losses, "record");
  }
  return text.empty() ? palette_(Colour::kGreen, "lossless") : text;
}

}  // namespace zorl2_inspect
