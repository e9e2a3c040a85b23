#include "tools/views/roundtrip_view.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

#include "tools/model/check_text.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {

RoundTripView::RoundTripView(Output& out, const Palette& palette, bool as_json)
    : out_(out), palette_(palette), as_json_(as_json), json_(out, JsonWriter::Layout::kIndented) {
  if (!as_json_) return;
  json_.BeginObject();
  json_.Member("schema", "roundtrip/1");
  json_.Key("differences");
  json_.BeginArray();
}

void RoundTripView::Report(std::uint64_t record, const std::string& where,
                           const zorl2::check::Loss& loss) {
  if (as_json_) {
    json_.BeginObject();
    json_.Member("record", record);
    json_.Member("path", loss.field);
    WriteValue("old", loss.before);
    WriteValue("new", loss.after);
    json_.Member("reason", LossKindName(loss.kind));
    json_.Key("problem");
    json_.Null();
    json_.EndObject();
    return;
  }
  out_.Print("{}{}: {} -> {} ({})\n", where, palette_(Colour::kBold, loss.field),
             palette_(Colour::kRed, BeforeText(loss)), palette_(Colour::kGreen, AfterText(loss)),
             LossKindName(loss.kind));
}

void RoundTripView::WriteValue(const char* name, const std::string& text) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end) return json_.MemberOrNull(name, text);
  json_.Member(name, number);
}

void RoundTripView::Reject(std::uint64_t record, const std::string& where,
                           const zorl2::check::Verdict& verdict) {
  if (as_json_) {
    json_.BeginObject();
    json_.Member("record", record);
    json_.Member("path", verdict.field);
    json_.Key("old");
    json_.Null();
    json_.Key("new");
    json_.Null();
    json_.Member("reason", "rejected");
    json_.Member("problem", RejectionText(verdict));
    json_.EndObject();
    return;
  }
  out_.Print("{}{}: {} ({})\n", where, palette_(Colour::kBold, verdict.field),
             palette_(Colour::kMagenta, RejectionText(verdict)), "rejected");
}

void RoundTripView::Finish(const RoundTripSummary& summary) {
  if (as_json_) {
    json_.EndArray();
    json_.Member("lossless", summary.losses + summary.rejected_records == 0);
    json_.Member("records", summary.records);
    json_.Member("rejected", summary.rejected_records);
    json_.Key("native_records");
    if (summary.timed_records > 0) {
      json_.Value(summary.timed_records);
    } else {
      json_.Null();
    }
    json_.Key("microseconds_each");
    if (summary.timed_records > 0) {
      json_.Value(summary.microseconds);
    } else {
      json_.Null();
    }
    json_.EndObject();
    return;
  }
  out_.Print("{}: {} ({}{})\n", Printable(summary.name), Result(summary), summary.what,
             summary.notes);
  if (summary.timed_records == 0) return;
  out_.Print("{} native records, {:.2f} us each to native and back\n", summary.timed_records,
             summary.microseconds);
}

std::string RoundTripView::Result(const RoundTripSummary& summary) const {
  std::string text;
  if (summary.rejected_records > 0) {
    text = palette_(Colour::kMagenta,
                    summary.is_stream ? fmt::format("{} records rejected", summary.rejected_records)
                                      : "rejected");
    if (summary.losses == 0) return text;
    text += ", ";
  }
  if (summary.losses == 0) return palette_(Colour::kGreen, "lossless");
  text += palette_(Colour::kYellow,
                   fmt::format("{} difference{}", summary.losses, summary.losses == 1 ? "" : "s"));
  if (summary.is_stream) text += fmt::format(" in {} records", summary.records_with_losses);
  return text;
}

}  // namespace zorl2_inspect
