#include "tools/views/stream_table.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/model/check_text.h"
#include "tools/model/findings.h"
#include "tools/model/unknown_fields.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2::check::Verdict;

constexpr std::size_t kRowsAtOnce = 1000;
constexpr std::size_t kMostRejections = 20;
// Of one record.
constexpr std::size_t kMostUnknown = 1000;

}  // namespace

StreamTable::StreamTable(Output& out, const Palette& palette)
    : out_(out), palette_(palette), rows_(EntryTable()) {}

void StreamTable::Add(const EntryRow& row) {
  AddRow(row, rows_);
  legend_.Add(row);
  if (rows_.size() >= kRowsAtOnce) Flush();
}

void StreamTable::AddNotKept(std::uint64_t record, const Message& message, const EntryRow& row) {
  losses_.Add(record, row.losses);
  // The losses of what does not convert are not known.
  if (!Converts(row.verdict)) AddUnknown(record, message);
}

void StreamTable::AddNotKept(std::uint64_t record, const Message& message) {
  std::vector<Loss> losses = FindAll(message).losses;
  // These are added below, also those of elements that do not convert.
  losses.erase(
      std::remove_if(losses.begin(), losses.end(),
                     [](const Loss& loss) { return loss.kind == LossKind::kUnknownField; }),
      losses.end());
  losses_.Add(record, losses);
  AddUnknown(record, message);
}

void StreamTable::AddRejections(std::uint64_t record, const std::vector<Verdict>& rejections) {
  for (const Verdict& verdict : rejections) {
    if (rejections_.size() < kMostRejections) {
      rejections_.push_back({record, verdict});
    } else {
      ++more_rejections_;
    }
  }
}

void StreamTable::AddUnknown(std::uint64_t record, const Message& message) {
  std::vector<Loss> unknown;
  for (UnknownValue& value : UnknownValues(message, kMostUnknown)) {
    unknown.push_back({LossKind::kUnknownField, std::move(value.path), std::move(value.value), ""});
  }
  losses_.Add(record, unknown);
}

void StreamTable::Flush() { rows_.PrintNext(out_, palette_); }

void StreamTable::Finish() {
  Flush();
  legend_.Print(out_);
  PrintLeftOut(rows_, out_);
  PrintRejections();
  PrintLosses();
}

void StreamTable::PrintRejections() {
  if (rejections_.empty()) return;
  out_.Write('\n');
  Table table({">RECORD", "NOT CONVERTED BECAUSE OF", "REASON"});
  table.FitTerminals();
  for (const Rejection& rejection : rejections_) {
    table.Add({fmt::format("{}", rejection.record), Cell(rejection.verdict.field, Colour::kMagenta),
               RejectionText(rejection.verdict)});
  }
  table.Print(out_, palette_);
  if (more_rejections_ > 0) out_.Print("and {} more\n", more_rejections_);
}

void StreamTable::PrintLosses() {
  Table table({"NOT KEPT BY THE NATIVE RECORDS", "REASON", ">COUNT", ">FIRST RECORD", "MESSAGE",
               "BACK FROM NATIVE"});
  for (const LossTotals::Total& total : losses_.Severe()) {
    table.Add({Cell(total.first.field, Colour::kYellow), LossKindName(total.first.kind),
               fmt::format("{}", total.count), fmt::format("{}", total.first_record),
               BeforeText(total.first), AfterText(total.first)});
  }
  if (!table.empty()) {
    out_.Write('\n');
    table.Print(out_, palette_);
  }
  if (losses_.others() > 0) out_.Print("and {} losses of other fields\n", losses_.others());
  if (losses_.defaults() == 0) return;
  if (table.empty()) out_.Write('\n');
  out_.Print("{} absent field{} default value{} (\"zorl2-inspect roundtrip\" lists them)\n",
             losses_.defaults(), losses_.defaults() == 1 ? " gets its" : "s get their",
             losses_.defaults() == 1 ? "" : "s");
}

}  // namespace zorl2_inspect
