// The message types that have a native record, and their conversions.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <functional>
#include <string>
#include <vector>

#include "tools/model/field_text.h"

namespace zorl2_inspect {

struct NativeType {
  const google::protobuf::Descriptor* message;
  const char* record;     // Such as "LagMemberOperation".
  const char* converter;  // The class that converts both ways.
  // Message to native and back to message. Returns false if either conversion does.
  bool (*round_trip)(const google::protobuf::Message& before, google::protobuf::Message& after);
  // The fields of the record under their paths in the message. A state signal has its states by
  // interface.
  std::vector<PathValue> (*fields)(const google::protobuf::Message& message);
};

// Null for a type without a native record.
const NativeType* FindNativeType(const google::protobuf::Descriptor& type);

// The name of the native record; of a part of a record such as "IntfEntry::GeneralInfo"; empty if
// there is none.
std::string NativeRecordName(const google::protobuf::Descriptor& type);

// Visits the message if it has a native record, otherwise the messages in it that do. The path of
// the message itself is empty.
using VisitNative = std::function<void(const std::string& path, const NativeType& type,
                                       const google::protobuf::Message& message)>;
void ForEachNative(const google::protobuf::Message& message, const VisitNative& visit);

// Message to native and back to message, for each message in it that has a native record. Copies
// the rest. The caller must have checked that it converts. Returns whether there is a native
// record.
bool RoundTrip(const google::protobuf::Message& before, google::protobuf::Message& after);

}  // namespace zorl2_inspect
