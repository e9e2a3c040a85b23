// Interfaces as a table.
#pragma once

#include <string>
#include <vector>

#include "tools/model/columns.h"
#include "tools/model/entry_row.h"
#include "tools/text/output.h"
#include "tools/text/table.h"

namespace zorl2_inspect {

// An empty table with the columns of the rows.
Table EntryTable();

// An empty table with the columns that an operator asked for.
Table ColumnsTable(const Columns& columns);

// Marks the text of a value that the native record does not keep with "!", and that of a value that
// it rejects with "!!".
void AddRow(const EntryRow& row, Table& table);

// Adds the rows to the table and prints it with the legend.
void PrintRows(const std::vector<EntryRow>& rows, Table table, Output& out, const Palette& palette);

// Prints which columns the terminal has no room for, if there are any.
void PrintLeftOut(const Table& table, Output& out);

// What the marks mean.
class Legend {
 public:
  void Add(RowValue::Mark mark);
  void Add(const EntryRow& row);
  // Prints a line for each mark that was added.
  void Print(Output& out) const;

 private:
  bool lost_ = false;
  bool rejected_ = false;
};

// The text with the mark after it.
Cell Marked(const std::string& text, RowValue::Mark mark);

}  // namespace zorl2_inspect
