// Not installed. The field mapping of the records nested in an interface entry, both directions
// side by side in the source file. The helper classes add the initialisation test that their
// callers are promised; the entry's converter tests the whole message once and comes here directly.
#pragma once

#include "interface_entry.pb.h"
#include "native/intf_entry.h"

namespace zorl2_mapping {

// Message to native, from an initialised message. An enumeration without a counterpart throws and
// leaves what was written before it.
void ToNative(const zorl2::protobuf::GeneralInfo& message, IntfEntry::GeneralInfo& native);
void ToNative(const zorl2::protobuf::StatusInfo& message, IntfEntry::StatusInfo& native);
void ToNative(const zorl2::protobuf::PhysicalInfo& message, IntfEntry::PhysicalInfo& native);
void ToNative(const zorl2::protobuf::InterfaceFlags& message, IntfEntry::InterfaceFlags& native);
void ToNative(const zorl2::protobuf::TypeInfo& message, IntfEntry::TypeInfo& native);
void ToNative(const zorl2::protobuf::BlockInfo& message, IntfEntry::BlockInfo& native);

// Native to message. Sets every field and clears none first. An enumeration without a counterpart
// throws and leaves what was set before it.
void ToMessage(const IntfEntry::GeneralInfo& native, zorl2::protobuf::GeneralInfo& message);
void ToMessage(const IntfEntry::StatusInfo& native, zorl2::protobuf::StatusInfo& message);
void ToMessage(const IntfEntry::PhysicalInfo& native, zorl2::protobuf::PhysicalInfo& message);
void ToMessage(const IntfEntry::InterfaceFlags& native, zorl2::protobuf::InterfaceFlags& message);
void ToMessage(const IntfEntry::TypeInfo& native, zorl2::protobuf::TypeInfo& message);
void ToMessage(const IntfEntry::BlockInfo& native, zorl2::protobuf::BlockInfo& message);

}  // namespace zorl2_mapping
