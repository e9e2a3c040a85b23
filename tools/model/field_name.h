// Fields by the names that an operator writes: a short name or a path.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/field_path.h"

namespace zorl2_inspect {

// A field of the records of one type, or of the elements in them.
//
// The short names are those of the columns of an entry, such as "oper". A path begins in an element
// ("statusInfo.adminStatus"), in the record ("infoClient.token"), or in the entry of a record that
// has one.
class FieldName {
 public:
  // Throws Error, which names the option and the nearest field, if there is no such field.
  FieldName(const google::protobuf::Descriptor& record, std::string_view name,
            std::string_view option);

  // As it was written.
  const std::string& text() const { return text_; }
  const FieldPath& path() const { return *path_; }
  const google::protobuf::FieldDescriptor& field() const { return path_->field(); }
  bool is_identifier() const;
  // Whether it is a field of an element of the record's list, and not of the record.
  bool of_element() const { return of_element_; }

  // Calls the function for each value that is present in the element or record. For "block" these
  // are the protocols that block.
  void ForEach(const google::protobuf::Message& message, const FieldPath::Visit& visit) const;

 private:
  bool Find(const google::protobuf::Descriptor& type, const std::string& prefix);

  std::string text_;
  std::optional<FieldPath> path_;
  bool of_element_ = false;
  bool only_blocking_ = false;
};

// The short names, in the order of the columns.
const std::vector<std::string>& ShortNames();

}  // namespace zorl2_inspect
