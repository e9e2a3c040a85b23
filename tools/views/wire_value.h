// The values of fields in the wire format as text.
#pragma once

#include <string>

#include "tools/wire/wire_walker.h"

namespace zorl2_inspect {

// Returns a text such as "LACP (3, native 2)"; for an identifier all its values.
std::string WireValueText(const WireField& field);

// Such as "enum ProtocolType", "packed uint32" or "unknown, varint".
std::string WireTypeText(const WireField& field);

// The type of a field of the schema: "enum ProtocolType".
std::string SchemaTypeText(const google::protobuf::FieldDescriptor& field);

}  // namespace zorl2_inspect
