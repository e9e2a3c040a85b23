// The parts of an interface entry, message to native.
#pragma once

#include "interface_entry.pb.h"
#include "native/export.h"
#include "native/intf_entry.h"

// Reads messages and writes native records. No state: any object, any thread.
//
// The enumeration functions translate a listed value to the value of the same name and return
// true. An unlisted one throws boost::wrapexcept<std::out_of_range> ("bimap<>: invalid key") and
// leaves the output as it was; parsing never stores such a value in a field, so it comes from a
// message filled in by code.
//
// The record functions return false for a message that lacks a required field, and the record is
// then as it was. An exception of an enumeration function or std::bad_alloc leaves what was
// written before it.
class ZORL2_EXPORT IntfEntryConvertHelperProtobuf {
 public:
  // The bridge port number keeps the low 16 bits of the message's 32, and stays as it was when the
  // message has none.
  bool ConvertGeneralInfo(const zorl2::protobuf::GeneralInfo& message,
                          IntfEntry::GeneralInfo& native);
  // The MTU is widened from 32 to 64 bits. Written in the order of the fields.
  bool ConvertPhysicalInfo(const zorl2::protobuf::PhysicalInfo& message,
                           IntfEntry::PhysicalInfo& native);
  // The operational speed is the same number on both sides. Written in the order of the fields.
  bool ConvertStatusInfo(const zorl2::protobuf::StatusInfo& message, IntfEntry::StatusInfo& native);
  // Each flag to the member of its name.
  bool ConvertInterfaceFlags(const zorl2::protobuf::InterfaceFlags& message,
                             IntfEntry::InterfaceFlags& native);
  // Type, flags, VLAN type, written in this order.
  bool ConvertTypeInfo(const zorl2::protobuf::TypeInfo& message, IntfEntry::TypeInfo& native);
  // Through DeserializeProtocolType and DeserializeBlockState, so no number is refused.
  bool ConvertBlockInfo(const zorl2::protobuf::BlockInfo& message, IntfEntry::BlockInfo& native);

  // The administrative status of the same name.
  bool ConvertAdminStatus(const zorl2::protobuf::AdminStatus& message,
                          IntfEntry::AdminStatus& native);
  // The operational status of the same name.
  bool ConvertOperationalStatus(const zorl2::protobuf::OperationalStatus& message,
                                IntfEntry::OperationalStatus& native);
  // The link status of the same name.
  bool ConvertLinkStatus(const zorl2::protobuf::LinkStatus& message, IntfEntry::LinkStatus& native);
  // The speed class of the same name.
  bool ConvertEthernetSpeed(const zorl2::protobuf::EthernetSpeed& message,
                            IntfEntry::EthernetSpeed& native);
  // The duplex mode of the same name.
  bool ConvertDuplexMode(const zorl2::protobuf::EthernetDuplexMode& message,
                         IntfEntry::EthernetDuplexMode& native);
  // The interface type of the same name.
  bool ConvertInterfaceType(const zorl2::protobuf::InterfaceType& message,
                            IntfEntry::InterfaceType& native);
  // The VLAN type of the same name.
  bool ConvertVlanType(const zorl2::protobuf::VlanType& message, IntfEntry::VlanType& native);
};
