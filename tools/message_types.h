// The messages of the nine schema files.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <memory>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// The files in the order of the schema, and in them the messages in the order of their
// declaration.
const std::vector<const google::protobuf::FileDescriptor*>& SchemaFiles();
const std::vector<const google::protobuf::Descriptor*>& MessageTypes();

// By name, with or without the package, in any case of letters. Null when there is none.
const google::protobuf::Descriptor* FindMessageType(std::string_view name);

// One of the six messages that a converter translates to a native record and back.
bool HasConverter(const google::protobuf::Descriptor& type);

// An empty message of the type.
std::unique_ptr<google::protobuf::Message> NewMessage(const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
