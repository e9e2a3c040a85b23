// Interfaces as a table.
#pragma once

#include <string>

#include "tools/model/entry_row.h"
#include "tools/text/output.h"
#include "tools/text/table.h"

namespace zorl2_inspect {

// An empty table with the columns of the rows.
Table EntryTable();

// Marks the text of a value that the native record does not keep with "!", and that of a value that
// it rejects with "!!".
void AddRow(const EntryRow& row, Table& table);

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
