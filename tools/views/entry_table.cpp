#include "tools/views/entry_table.h"

#include <string>
#include <utility>
#include <vector>

#include "tools/model/check_text.h"

namespace zorl2_inspect {
namespace {

using Mark = RowValue::Mark;

Colour ColourOf(Mark mark) {
  switch (mark) {
    case Mark::kGood:
      return Colour::kGreen;
    case Mark::kBad:
      return Colour::kRed;
    case Mark::kUnusual:
    case Mark::kLost:
      return Colour::kYellow;
    case Mark::kRejected:
      return Colour::kMagenta;
    case Mark::kNone:
      break;
  }
  return Colour::kPlain;
}

}  // namespace

Cell Marked(const std::string& text, Mark mark) {
  const char* const sign = mark == Mark::kRejected ? "!!" : mark == Mark::kLost ? "!" : "";
  Cell cell(text + sign, ColourOf(mark));
  cell.important = *sign != '\0';
  return cell;
}

Table EntryTable() {
  std::vector<std::string> titles;
  for (const EntryColumn& column : EntryColumns()) {
    titles.push_back((column.is_number ? ">" : "") + std::string(column.title));
  }
  titles.emplace_back("PROBLEM");
  Table table(std::move(titles));
  table.FitTerminals({"CATEGORY", "PARENT", "TYPE", "LINK", "SPEED", "MTU", "ADMIN"});
  return table;
}

Table ColumnsTable(const Columns& columns) {
  std::vector<std::string> titles = columns.Titles();
  const std::size_t always = titles.size();
  titles.emplace_back("PROBLEM");
  Table table(std::move(titles), always);
  table.FitTerminals();
  return table;
}

void AddRow(const EntryRow& row, Table& table) {
  std::vector<Cell> cells;
  cells.reserve(row.values.size() + 1);
  for (const RowValue& value : row.values) cells.push_back(Marked(value.text, value.mark));
  cells.emplace_back(row.problem, ColourOf(Converts(row.verdict) ? Mark::kLost : Mark::kRejected));
  table.Add(std::move(cells));
}

void PrintRows(const std::vector<EntryRow>& rows, Table table, Output& out,
               const Palette& palette) {
  Legend legend;
  for (const EntryRow& row : rows) {
    AddRow(row, table);
    legend.Add(row);
  }
  if (!table.empty()) table.Print(out, palette);
  legend.Print(out);
  PrintLeftOut(table, out);
}

void PrintLeftOut(const Table& table, Output& out) {
  const std::string names = table.LeftOut();
  if (names.empty()) return;
  out.Print("no room for {} (--columns chooses columns)\n", names);
}

void Legend::Add(Mark mark) {
  lost_ = lost_ || mark == Mark::kLost;
  rejected_ = rejected_ || mark == Mark::kRejected;
}

void Legend::Add(const EntryRow& row) {
  for (const RowValue& value : row.values) Add(value.mark);
}

void Legend::Print(Output& out) const {
  if (lost_) out.Write("! the native record does not keep this value\n");
  if (rejected_) out.Write("!! the conversion to native fails because of this value\n");
}

}  // namespace zorl2_inspect
