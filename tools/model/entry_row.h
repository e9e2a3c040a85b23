// An interface as a row of a table.
#pragma once

#include <google/protobuf/message.h>

#include <string>
#include <vector>

#include "check/check.h"
#include "interface_entry.pb.h"
#include "tools/model/field_path.h"

namespace zorl2_inspect {

struct RowValue {
  enum class Mark {
    kNone,
    kGood,
    kBad,       // The interface does not work, or a protocol holds it.
    kUnusual,   // A value that says nothing.
    kLost,      // The conversion to native changes the value.
    kRejected,  // The conversion to native fails because of the value.
  };

  std::string text;  // "-" if absent.
  Mark mark = Mark::kNone;
};

struct EntryColumn {
  const char* title;
  bool is_number;
  const char* path;  // Of the field that the column shows.
  RowValue (*value)(const zorl2::protobuf::IntfEntry& entry);
};

// The columns of the table, in their order.
const std::vector<EntryColumn>& EntryColumns();

struct EntryRow {
  zorl2::check::Verdict verdict;
  std::vector<zorl2::check::Loss> losses;
  std::vector<RowValue> values;  // One for each column.
  // For a rejected entry the field and the reason; otherwise the fields that are not kept and have
  // no column, such as "not kept: #77". Empty if there are none.
  std::string problem;
};

// The values are those of the message, whether or not it converts.
EntryRow MakeEntryRow(const zorl2::protobuf::IntfEntry& entry);

// A field that a column shows.
struct ShownField {
  explicit ShownField(const FieldPath& shown);

  std::string path;      // Without indices.
  std::string unlisted;  // Where the runtime keeps its unlisted values: "statusInfo.#1".
};

// A row with a value of the message for each of the fields. Marks the values and adds the problem.
EntryRow MakeRow(const google::protobuf::Message& message, const std::vector<ShownField>& fields,
                 std::vector<RowValue> values);

}  // namespace zorl2_inspect
