// The entries of a stream as one table, printed while the stream is read.
#pragma once

#include <cstdint>
#include <utility>

#include "tools/model/entry_row.h"
#include "tools/model/loss_totals.h"
#include "tools/text/colours.h"
#include "tools/text/output.h"
#include "tools/text/table.h"
#include "tools/views/entry_table.h"

namespace zorl2_inspect {

class StreamTable {
 public:
  StreamTable(Output& out, const Palette& palette);

  // Uses this table, which is empty, for the rows.
  void Replace(Table rows) { rows_ = std::move(rows); }
  void Add(std::uint64_t record, const EntryRow& row);
  // Prints the rows that have been added.
  void Flush();
  // Prints the legend and what the native records do not keep, for the whole stream.
  void Finish();

 private:
  void PrintLosses();

  Output& out_;
  Palette palette_;
  Table rows_;
  Legend legend_;
  LossTotals losses_;
};

}  // namespace zorl2_inspect
