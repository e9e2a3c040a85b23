#include "tools/views/stream_table.h"

#include <fmt/format.h>

#include "tools/model/check_text.h"

namespace zorl2_inspect {
namespace {

constexpr std::size_t kRowsAtOnce = 1000;

}  // namespace

StreamTable::StreamTable(Output& out, const Palette& palette)
    : out_(out), palette_(palette), rows_(EntryTable()) {}

void StreamTable::Add(std::uint64_t record, const EntryRow& row) {
  AddRow(row, rows_);
  legend_.Add(row);
  losses_.Add(record, row.losses);
  if (rows_.size() >= kRowsAtOnce) Flush();
}

void StreamTable::Flush() { rows_.PrintNext(out_, palette_); }

void StreamTable::Finish() {
  Flush();
  legend_.Print(out_);
  PrintLosses();
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
