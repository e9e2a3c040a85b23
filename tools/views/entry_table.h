// Interfaces as a table.
#pragma once

#include <vector>

#include "tools/model/entry_row.h"
#include "tools/text/table.h"

namespace zorl2_inspect {

// An empty table with the columns of the rows.
Table EntryTable();

// Both add the values of one row.
void AddRow(const std::vector<RowValue>& values, Table& table);
inline void AddRow(const EntryRow& row, Table& table) { AddRow(row.values, table); }

}  // namespace zorl2_inspect
