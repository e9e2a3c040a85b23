// Not installed. The message types that have a native record.
#pragma once

#include <google/protobuf/descriptor.h>

namespace zorl2::check::internal {

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

}  // namespace zorl2::check::internal
