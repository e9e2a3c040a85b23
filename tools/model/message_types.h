// The messages of the nine schema files.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <memory>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// The files in the order of the schema, and their messages in the order of declaration.
const std::vector<const google::protobuf::FileDescriptor*>& SchemaFiles();
const std::vector<const google::protobuf::Descriptor*>& MessageTypes();

// The type with this name, with or without the package, in upper or lower case. Null if there is
// none.
const google::protobuf::Descriptor* FindMessageType(std::string_view name);

// An empty message of the type.
std::unique_ptr<google::protobuf::Message> NewMessage(const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
