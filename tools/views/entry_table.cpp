#include "tools/views/entry_table.h"

#include <string>
#include <utility>
#include <vector>

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

Table EntryTable() {
  std::vector<std::string> titles;
  for (const EntryColumn& column : EntryColumns()) {
    titles.push_back((column.is_number ? ">" : "") + std::string(column.title));
  }
  return Table(std::move(titles));
}

void AddRow(const std::vector<RowValue>& values, Table& table) {
  std::vector<Cell> cells;
  cells.reserve(values.size());
  for (const RowValue& value : values) cells.emplace_back(value.text, ColourOf(value.mark));
  table.Add(std::move(cells));
}

}  // namespace zorl2_inspect
