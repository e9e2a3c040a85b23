// The columns that an operator asked for.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>
#include <string_view>
#include <vector>

#include "tools/model/entry_row.h"
#include "tools/model/field_name.h"

namespace zorl2_inspect {

class Columns {
 public:
  // The list has short names and paths, separated by commas. Throws Error for a name that is
  // unknown.
  Columns(const google::protobuf::Descriptor& record, std::string_view list);

  // The headings as Table takes them.
  std::vector<std::string> Titles() const;

  // Whether the rows are the elements of a record, and not the record itself.
  bool of_elements() const { return list_ != nullptr; }

  // The rows of a record: one for each of its elements, or one for a record without a list.
  std::vector<EntryRow> Rows(const google::protobuf::Message& record) const;

 private:
  EntryRow Row(const google::protobuf::Message& element) const;

  const google::protobuf::FieldDescriptor* list_;
  std::vector<FieldName> fields_;
  std::vector<ShownField> shown_;
};

}  // namespace zorl2_inspect
