// Not installed. Reads messages of any class through their descriptors.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstddef>
#include <string>

namespace zorl2::check::internal {

// The message types that have a native record.
enum class RecordType {
  kZorid,
  kIntfEntry,
  kShutStateSync,
  kBlockStateSync,
  kInformationClient,
  kLagMemberOperation,
  kNone,
};
constexpr auto kRecordTypes = static_cast<std::size_t>(RecordType::kNone);

// Recognises the types of other descriptor pools too, by their name and their fields.
RecordType RecordTypeOf(const google::protobuf::Descriptor& type);

// The generated descriptor of any type but kNone.
const google::protobuf::Descriptor& DescriptorOf(RecordType type);

// A message and the descriptors to read it by. They are kept, because the call that gets them from
// a message takes longer than most reads.
struct Reflected {
  const google::protobuf::Message& message;
  const google::protobuf::Reflection& reflection;
  const google::protobuf::Descriptor& type;
};
Reflected Reflect(const google::protobuf::Message& message);

// The field with a number that the type has.
const google::protobuf::FieldDescriptor& FieldOf(const Reflected& reflected, int number);

// How many values a field has; a singular one has none or one.
int CountOf(const Reflected& reflected, const google::protobuf::FieldDescriptor& field);

// The message in a field; the index of a singular one is 0.
const google::protobuf::Message& MessageAt(const Reflected& reflected,
                                           const google::protobuf::FieldDescriptor& field,
                                           int index);

// "intfs[3]"; "zorid" for a singular field, "intfs" for kWholeList.
constexpr int kWholeList = -1;
std::string ElementPath(const google::protobuf::FieldDescriptor& field, int index);

}  // namespace zorl2::check::internal
