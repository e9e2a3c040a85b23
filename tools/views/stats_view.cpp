#include "tools/views/stats_view.h"

#include <fmt/format.h>

#include "tools/text/quoting.h"
#include "tools/views/problem_json.h"

namespace zorl2_inspect {
namespace {

// 1234567 as 1,234,567.
std::string Grouped(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t place = digits.size(); place > 3;) {
    place -= 3;
    digits.insert(place, 1, ',');
  }
  return digits;
}

// Of the later lines of a bad record.
constexpr std::size_t kLaterLines = 4;

double PerSecond(std::uint64_t count, double seconds) {
  return seconds > 0 ? static_cast<double>(count) / seconds : 0;
}

std::string Rate(std::uint64_t count, double seconds) {
  return Grouped(static_cast<std::uint64_t>(PerSecond(count, seconds)));
}

double Mean(const RecordSummary& summary) {
  return summary.records == 0
             ? 0
             : static_cast<double>(summary.bytes) / static_cast<double>(summary.records);
}

std::uint64_t LowEnd(std::size_t magnitude) {
  return magnitude == 0 ? 0 : std::uint64_t{1} << (magnitude - 1);
}

std::uint64_t HighEnd(std::size_t magnitude) {
  return magnitude == 0 ? 0 : LowEnd(magnitude) + (LowEnd(magnitude) - 1);
}

}  // namespace

StatsView::StatsView(Output& out, bool as_json, std::uint64_t listed)
    : out_(out), as_json_(as_json), listed_(listed), json_(out, JsonWriter::Layout::kIndented) {}

void StatsView::Begin(const std::string& name, const std::string& type) {
  if (!as_json_) {
    out_.Print("{}: records of type {}\n", Printable(name), type);
    return;
  }
  json_.BeginObject();
  json_.Member("schema", "stats/1");
  json_.Member("file", name);
  json_.Member("type", type);
  json_.Key("bad");
  json_.BeginArray();
}

void StatsView::Bad(const BadRecord& bad) {
  if (++bad_ > listed_) return;
  if (!as_json_) {
    out_.WriteWrapped(
        fmt::format("record {}, offset {:#x}, {} bytes: {}: {}", bad.number, bad.offset, bad.size,
                    OutcomeName(bad.outcome), Printable(ProblemText(bad.problem))),
        kLaterLines);
    return;
  }
  json_.BeginObject();
  json_.Member("record", bad.number);
  json_.Member("offset", bad.offset);
  json_.Member("bytes", bad.size);
  json_.Member("outcome", OutcomeName(bad.outcome));
  WriteProblem("problem", bad.problem, json_);
  json_.EndObject();
}

void StatsView::End(const RecordSummary& summary, const std::vector<CountSection>& sections,
                    const std::optional<Problem>& broken) {
  if (as_json_) {
    EndJson(summary, sections, broken);
  } else {
    EndText(summary, sections);
  }
}

void StatsView::EndText(const RecordSummary& summary, const std::vector<CountSection>& sections) {
  if (bad_ > listed_) {
    out_.Print("and {} more that are not good (--list sets how many are listed)\n",
               Grouped(bad_ - listed_));
  }
  out_.Print("\n{:<44}{:>15}\n", "records", Grouped(summary.records));
  for (std::size_t i = 0; i < summary.outcomes.size(); ++i) {
    if (summary.outcomes[i] == 0) continue;
    out_.Print("  {:<42}{:>15}\n", OutcomeName(static_cast<RecordOutcome>(i)),
               Grouped(summary.outcomes[i]));
  }
  if (summary.left_out > 0) {
    out_.Print("{:<44}{:>15}\n", "records left out by --where", Grouped(summary.left_out));
  }
  out_.Print("{:<44}{:>15}\n", "bytes in records", Grouped(summary.bytes));
  if (summary.records > 0) {
    out_.Print("  {:<42}{:>15}\n  {:<42}{:>15.1f}\n  {:<42}{:>15}\n", "smallest",
               Grouped(summary.smallest), "mean", Mean(summary), "largest",
               Grouped(summary.largest));
  }
  for (std::size_t i = 0; i < summary.by_magnitude.size(); ++i) {
    if (summary.by_magnitude[i] == 0) continue;
    out_.Print("  {:<42}{:>15}\n",
               fmt::format("from {} to {}", Grouped(LowEnd(i)), Grouped(HighEnd(i))),
               Grouped(summary.by_magnitude[i]));
  }
  out_.Print("{:<44}{:>15.3f}\n", "seconds", summary.seconds);
  out_.Print("  {:<42}{:>15}\n", "records per second", Rate(summary.records, summary.seconds));
  out_.Print("  {:<42}{:>15}\n", "conversions per second, both directions",
             Rate(summary.conversions, summary.seconds));
  out_.Print("  {:<42}{:>15}\n", "bytes per second", Rate(summary.bytes, summary.seconds));
  for (const CountSection& section : sections) {
    out_.Print("\n{}\n", section.title);
    for (const auto& [label, count] : section.counts) {
      out_.Print("  {:<42}{:>15}\n", label, Grouped(count));
    }
  }
}

void StatsView::EndJson(const RecordSummary& summary, const std::vector<CountSection>& sections,
                        const std::optional<Problem>& broken) {
  json_.EndArray();
  json_.Member("unlisted", bad_ > listed_ ? bad_ - listed_ : 0);
  WriteProblem("broken", broken, json_);
  json_.Member("records", summary.records);
  for (std::size_t i = 0; i < summary.outcomes.size(); ++i) {
    json_.Member(OutcomeName(static_cast<RecordOutcome>(i)), summary.outcomes[i]);
  }
  json_.Member("left_out", summary.left_out);
  json_.Member("bytes", summary.bytes);
  const bool any = summary.records > 0;
  json_.MemberOrNull("smallest", any ? std::optional(summary.smallest) : std::nullopt);
  json_.MemberOrNull("mean", any ? std::optional(Mean(summary)) : std::nullopt);
  json_.MemberOrNull("largest", any ? std::optional(summary.largest) : std::nullopt);
  json_.Key("sizes");
  json_.BeginArray();
  for (std::size_t i = 0; i < summary.by_magnitude.size(); ++i) {
    if (summary.by_magnitude[i] == 0) continue;
    json_.BeginObject();
    json_.Member("from", LowEnd(i));
    json_.Member("to", HighEnd(i));
    json_.Member("records", summary.by_magnitude[i]);
    json_.EndObject();
  }
  json_.EndArray();
  json_.Member("seconds", summary.seconds);
  json_.Member("records_per_second", PerSecond(summary.records, summary.seconds));
  json_.Member("conversions_per_second", PerSecond(summary.conversions, summary.seconds));
  json_.Member("bytes_per_second", PerSecond(summary.bytes, summary.seconds));
  json_.Key("counts");
  json_.BeginObject();
  for (const CountSection& section : sections) {
    json_.Key(section.title);
    json_.BeginObject();
    for (const auto& [label, count] : section.counts) json_.Member(label, count);
    json_.EndObject();
  }
  json_.EndObject();
  json_.EndObject();
}

}  // namespace zorl2_inspect
