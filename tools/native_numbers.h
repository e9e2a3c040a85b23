// What number an enumeration value of the wire has natively.
#pragma once

#include <google/protobuf/descriptor.h>

#include <optional>

namespace zorl2_inspect {

// Asked of the library's own translations, except for the categories, which have none that can be
// called alone. Nothing for an enumeration without a native side.
std::optional<int> NativeNumber(const google::protobuf::EnumValueDescriptor& value);

// The native name of an enumeration, such as IntfEntry::VlanType; empty when it has no native side.
const char* NativeEnumName(const google::protobuf::EnumDescriptor& type);

// The native record of a message, such as LagMemberOperation; empty when it has none. A part of a
// record counts as one: GeneralInfo is IntfEntry::GeneralInfo.
const char* NativeRecordName(const google::protobuf::Descriptor& type);

// The class that converts a message as a whole; empty when there is none.
const char* ConverterName(const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
