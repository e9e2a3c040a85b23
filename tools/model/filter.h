// The part of a capture that an operator asked for.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/condition.h"

namespace zorl2_inspect {

// Conditions joined by "and". A condition on an element selects elements; a condition on the record
// selects records. A record with a list is not selected if none of its elements is.
class Filter {
 public:
  // Throws Error.
  Filter(const google::protobuf::Descriptor& record, const std::vector<std::string>& conditions);

  // Without conditions everything is selected.
  bool empty() const { return conditions_.empty(); }

  // Whether an element, or a record, is selected.
  bool Selects(const google::protobuf::Message& message) const;

  // Removes the elements that are not selected. Returns false if nothing of the record is selected;
  // the contents of the record are then unspecified.
  bool Apply(google::protobuf::Message* record);

  // How many elements, or records without a list, Apply() has seen and selected.
  std::uint64_t seen() const { return seen_; }
  std::uint64_t selected() const { return selected_; }
  // Of the last record.
  std::size_t last_seen() const { return last_seen_; }

  // The path in the last record as it was before Apply(): "intfEntry[0].parent" is
  // "intfEntry[47].parent" again.
  std::string PathBefore(const std::string& path) const;
  int IndexBefore(int index) const;

 private:
  bool HoldAll(const google::protobuf::Message& message, bool of_element) const;

  const google::protobuf::Descriptor* type_;
  const google::protobuf::FieldDescriptor* list_;
  std::vector<Condition> conditions_;
  bool has_element_conditions_ = false;
  std::uint64_t seen_ = 0;
  std::uint64_t selected_ = 0;
  std::size_t last_seen_ = 0;
  std::vector<int> kept_;
};

}  // namespace zorl2_inspect
