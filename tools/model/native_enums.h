// The native numbers of enumeration values.
#pragma once

#include <google/protobuf/descriptor.h>

#include <optional>

namespace zorl2_inspect {

// Returns the number that the library's own translation gives; for the categories, which the
// library does not translate on their own, that of a table here. Returns nothing for an enumeration
// without a native side.
std::optional<int> NativeNumber(const google::protobuf::EnumValueDescriptor& value);

// The native name of an enumeration, such as IntfEntry::VlanType; empty if it has none.
const char* NativeEnumName(const google::protobuf::EnumDescriptor& type);

}  // namespace zorl2_inspect
