#include "tools/views/roundtrip_view.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

#include "tools/model/check_text.h"

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

void RoundTripView::Finish(const RoundTripSummary& summary) {
  if (as_json_) {
    json_.EndArray();
    json_.Member("lossless", summary.losses == 0);
    json_.Member("records", summary.records);
    json_.EndObject();
    return;
  }
  std::string verdict = palette_(Colour::kGreen, "lossless");
  if (summary.losses > 0) {
    verdict = palette_(Colour::kYellow, fmt::format("{} difference{}", summary.losses,
                                                    summary.losses == 1 ? "" : "s"));
    if (summary.is_stream) verdict += fmt::format(" in {} records", summary.records_with_losses);
  }
  out_.Print("{}: {} ({}{})\n", summary.name, verdict, summary.what, summary.notes);
}

}  // namespace zorl2_inspect
