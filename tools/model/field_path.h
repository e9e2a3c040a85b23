// Fields by their path, in messages of any type.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// A path such as "statusInfo.adminStatus", "intfEntry[2].zorid" or "intfEntry.zorid". A repeated
// field without an index means all its elements.
class FieldPath {
 public:
  static constexpr int kAll = -1;

  struct Step {
    const google::protobuf::FieldDescriptor* field;
    int index;  // kAll for a singular field, too.
  };

  // Throws Error, with the fields that exist, if the type has no such field.
  FieldPath(const google::protobuf::Descriptor& type, std::string_view path);

  const std::string& text() const { return text_; }
  const std::vector<Step>& steps() const { return steps_; }
  // The last field of the path.
  const google::protobuf::FieldDescriptor& field() const { return *steps_.back().field; }

  // Calls the function for each value that is present, with the message that contains it and its
  // index there, which is -1 for a singular field. ValueText() turns a value into text.
  using Visit = std::function<void(const google::protobuf::Message& parent, int index)>;
  void ForEach(const google::protobuf::Message& message, const Visit& visit) const;

 private:
  std::string text_;
  std::vector<Step> steps_;
};

// The message at the path, each repeated field of which has an index; the message itself for an
// empty path. The path must lead through what is there.
const google::protobuf::Message& MessageAt(const google::protobuf::Message& message,
                                           std::string_view path);

// The same for the message that contains the field at the end of the path.
const google::protobuf::Message& ParentAt(const google::protobuf::Message& message,
                                          const FieldPath& path);

}  // namespace zorl2_inspect
