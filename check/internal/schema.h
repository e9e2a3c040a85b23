// Not installed. Reads messages of any class through their descriptors.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>

namespace zorl2::check::internal {

// The message types that have a native record.
enum class RecordType {
  kNone,
  kZorid,
  kIntfEntry,
  kShutStateSync,
  kBlockStateSync,
  kInformationClient,
  kLagMemberOperation,
};

// Recognises the types of other descriptor pools too, by their name and their fields.
RecordType RecordTypeOf(const google::protobuf::Descriptor& type);

// How many values a field has; a singular one has none or one.
int CountOf(const google::protobuf::Message& message,
            const google::protobuf::FieldDescriptor& field);

// The message in a field; the index of a singular one is 0.
const google::protobuf::Message& MessageAt(const google::protobuf::Message& message,
                                           const google::protobuf::FieldDescriptor& field,
                                           int index);

// "intfs[3]"; "zorid" for a singular field, "intfs" for kWholeList.
constexpr int kWholeList = -1;
std::string ElementPath(const google::protobuf::FieldDescriptor& field, int index);

}  // namespace zorl2::check::internal
