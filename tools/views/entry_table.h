// Interfaces as a table.
#pragma once

#include "tools/model/entry_row.h"
#include "tools/text/table.h"

namespace zorl2_inspect {

// An empty table with the columns of the rows.
Table EntryTable();

void AddRow(const EntryRow& row, Table& table);

}  // namespace zorl2_inspect
