#include "tools/stats_report.h"

#include <fmt/format.h>

#include <google/protobuf/stubs/common.h>

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

std::string JsonQuoted(std::string_view text) {
  const bool utf8 = google::protobuf::internal::IsStructurallyValidUTF8(
      text.data(), static_cast<int>(text.size()));
  std::string out = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (byte < 0x20 || byte == 0x7f) {
      out += fmt::format("\\u{:04x}", byte);
    } else if (byte < 0x80 || utf8) {
      out += c;
    } else {
      out += "\\ufffd";
    }
  }
  return out + '"';
}

void StatsReport::Begin(const std::string& name, const std::string& type) {
  if (json_) {
    fmt::print(out_, "{{\"file\": {}, \"type\": {}, \"bad\": [", JsonQuoted(name),
               JsonQuoted(type));
  } else {
    fmt::print(out_, "{}: length-delimited records of type {}\n", name, type);
  }
}

void StatsReport::Bad(std::uint64_t number, std::uint64_t offset, std::uint64_t size,
                      const char* outcome, const std::string& problem) {
  if (++bad_ > listed_) return;
  if (json_) {
    fmt::print(out_,
               "{}\n  {{\"record\": {}, \"offset\": {}, \"bytes\": {}, \"outcome\": \"{}\", "
               "\"problem\": {}}}",
               bad_ > 1 ? "," : "", number, offset, size, outcome, JsonQuoted(problem));
  } else {
    fmt::print(out_, "record {} at {:#x}, {} bytes: {}: {}\n", number, offset, size, outcome,
               problem);
  }
}

void StatsReport::End(const RecordSummary& summary, const std::vector<CountSection>& sections,
                      const std::string& broken) {
  if (json_) {
    EndJson(summary, sections, broken);
  } else {
    EndText(summary, sections);
  }
}

void StatsReport::EndText(const RecordSummary& summary, const std::vector<CountSection>& sections) {
  if (bad_ > listed_) {
    fmt::print(out_, "and {} more that are not good (--list says how many are shown)\n",
               Grouped(bad_ - listed_));
  }
  fmt::print(out_, "\n{:<44}{:>15}\n", "records", Grouped(summary.records));
  for (std::size_t i = 0; i < summary.outcomes.size(); ++i) {
    if (summary.outcomes[i] == 0) continue;
    fmt::print(out_, "  {:<42}{:>15}\n", OutcomeName(static_cast<RecordCounter::Outcome>(i)),
               Grouped(summary.outcomes[i]));
  }
  fmt::print(out_, "{:<44}{:>15}\n", "bytes in records", Grouped(summary.bytes));
  if (summary.records > 0) {
    fmt::print(out_, "  {:<42}{:>15}\n  {:<42}{:>15.1f}\n  {:<42}{:>15}\n", "smallest",
               Grouped(summary.smallest), "mean", Mean(summary), "largest",
               Grouped(summary.largest));
  }
  for (std::size_t i = 0; i < summary.by_magnitude.size(); ++i) {
    if (summary.by_magnitude[i] == 0) continue;
    fmt::print(out_, "  {:<42}{:>15}\n",
               fmt::format("from {} to {}", Grouped(LowEnd(i)), Grouped(HighEnd(i))),
               Grouped(summary.by_magnitude[i]));
  }
  fmt::print(out_, "{:<44}{:>15.3f}\n", "seconds", summary.seconds);
  fmt::print(out_, "  {:<42}{:>15}\n", "records per second",
             Rate(summary.records, summary.seconds));
  fmt::print(out_, "  {:<42}{:>15}\n", "conversions per second, both directions",
             Rate(summary.conversions, summary.seconds));
  fmt::print(out_, "  {:<42}{:>15}\n", "bytes per second", Rate(summary.bytes, summary.seconds));
  for (const CountSection& section : sections) {
    fmt::print(out_, "\n{}\n", section.title);
    for (const auto& [label, count] : section.counts) {
      fmt::print(out_, "  {:<42}{:>15}\n", label, Grouped(count));
    }
  }
}

void StatsReport::EndJson(const RecordSummary& summary, const std::vector<CountSection>& sections,
                          const std::string& broken) {
  fmt::print(out_, "],\n \"unlisted\": {},\n \"broken\": {},\n \"records\": {}",
             bad_ > listed_ ? bad_ - listed_ : 0, broken.empty() ? "null" : JsonQuoted(broken),
             summary.records);
  for (std::size_t i = 0; i < summary.outcomes.size(); ++i) {
    fmt::print(out_, ", \"{}\": {}", OutcomeName(static_cast<RecordCounter::Outcome>(i)),
               summary.outcomes[i]);
  }
  fmt::print(out_, ",\n \"bytes\": {}, \"smallest\": {}, \"mean\": {:.3f}, \"largest\": {}",
             summary.bytes, summary.records == 0 ? 0 : summary.smallest, Mean(summary),
             summary.largest);
  fmt::print(out_, ",\n \"sizes\": [");
  const char* separator = "";
  for (std::size_t i = 0; i < summary.by_magnitude.size(); ++i) {
    if (summary.by_magnitude[i] == 0) continue;
    fmt::print(out_, "{}{{\"from\": {}, \"to\": {}, \"records\": {}}}", separator, LowEnd(i),
               HighEnd(i), summary.by_magnitude[i]);
    separator = ", ";
  }
  fmt::print(out_,
             "],\n \"seconds\": {:.6f}, \"records_per_second\": {:.0f}, "
             "\"conversions_per_second\": {:.0f}, \"bytes_per_second\": {:.0f},\n \"counts\": {{",
             summary.seconds, PerSecond(summary.records, summary.seconds),
             PerSecond(summary.conversions, summary.seconds),
             PerSecond(summary.bytes, summary.seconds));
  separator = "\n";
  for (const CountSection& section : sections) {
    fmt::print(out_, "{}  {}: {{", separator, JsonQuoted(section.title));
    const char* comma = "";
    for (const auto& [label, count] : section.counts) {
      fmt::print(out_, "{}{}: {}", comma, JsonQuoted(label), count);
      comma = ", ";
    }
    fmt::print(out_, "}}");
    separator = ",\n";
  }
  fmt::print(out_, "}}}}\n");
}

}  // namespace zorl2_inspect
