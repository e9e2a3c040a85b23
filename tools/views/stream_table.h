// The entries of a stream as one table, printed while the stream is read.
#pragma once

#include <google/protobuf/message.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "check/check.h"
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
  // A row of a record.
  void Add(const EntryRow& row);
  // What the native records do not keep of the record.
  void AddNotKept(std::uint64_t record, const google::protobuf::Message& message);
  // The same for a record that has been checked for its only row.
  void AddNotKept(std::uint64_t record, const google::protobuf::Message& message,
                  const EntryRow& row);
  // Why parts of the record do not convert.
  void AddRejections(std::uint64_t record, const std::vector<zorl2::check::Verdict>& rejections);
  // Prints the rows that have been added.
  void Flush();
  // Prints the legend and what the native records do not keep, for the whole stream.
  void Finish();

 private:
  struct Rejection {
    std::uint64_t record = 0;
    zorl2::check::Verdict verdict;
  };

  void AddUnknown(std::uint64_t record, const google::protobuf::Message& message);
  void PrintRejections();
  void PrintLosses();

  Output& out_;
  Palette palette_;
  Table rows_;
  Legend legend_;
  LossTotals losses_;
  // The first ones.
  std::vector<Rejection> rejections_;
  std::uint64_t more_rejections_ = 0;
};

}  // namespace zorl2_inspect
