// The parts of an interface entry, native to message.
#pragma once

#include "interface_entry.pb.h"
#include "native/export.h"
#include "native/intf_entry.h"

// Reads native records and writes messages. No state: any object, any thread.
//
// The enumeration functions translate a listed value to the value of the same name. An unlisted
// one throws boost::wrapexcept<std::out_of_range> ("bimap<>: invalid key") and leaves the output as
// it was.
//
// The record functions set every field of the message and do not clear it first, so unknown fields
// of the message stay. An exception of an enumeration function or std::bad_alloc leaves what was
// set before it.
class ZORL2_EXPORT IntfEntryConvertHelperZOR {
 public:
  // The bridge port number is always present afterwards, 0 included.
  void ConvertGeneralInfo(const IntfEntry::GeneralInfo& native,
                          zorl2::protobuf::GeneralInfo& message);
  // Each flag to the field of its name.
  void ConvertInterfaceFlags(const IntfEntry::InterfaceFlags& native,
                             zorl2::protobuf::InterfaceFlags& message);
  // Through SerializeProtocolType and SerializeBlockState, so no number is refused.
  void ConvertBlockInfo(const IntfEntry::BlockInfo& native, zorl2::protobuf::BlockInfo& message);
  // Translates the three states before it sets any field: an exception leaves the message as it
  // was.
  void ConvertStatusInfo(const IntfEntry::StatusInfo& native, zorl2::protobuf::StatusInfo& message);
  // The MTU keeps the low 32 of its 64 bits. Set in the order of the fields.
  void ConvertPhysicalInfo(const IntfEntry::PhysicalInfo& native,
                           zorl2::protobuf::PhysicalInfo& message);
  // Type, flags, VLAN type, set in this order. The nested flags are replaced as a whole, their
  // unknown fields included.
  void ConvertTypeInfo(const IntfEntry::TypeInfo& native, zorl2::protobuf::TypeInfo& message);

  // The administrative status of the same name.
  void ConvertAdminStatus(const IntfEntry::AdminStatus& native,
                          zorl2::protobuf::AdminStatus& message);
  // The operational status of the same name.
  void ConvertOperationalStatus(const IntfEntry::OperationalStatus& native,
                                zorl2::protobuf::OperationalStatus& message);
  // The link status of the same name.
  void ConvertLinkStatus(const IntfEntry::LinkStatus& native, zorl2::protobuf::LinkStatus& message);
  // The speed class of the same name.
  void ConvertEthernetSpeed(const IntfEntry::EthernetSpeed& native,
                            zorl2::protobuf::EthernetSpeed& message);
  // The duplex mode of the same name.
  void ConvertDuplexMode(const IntfEntry::EthernetDuplexMode& native,
                         zorl2::protobuf::EthernetDuplexMode& message);
  // The interface type of the same name.
  void ConvertInterfaceType(const IntfEntry::InterfaceType& native,
                            zorl2::protobuf::InterfaceType& message);
  // The VLAN type of the same name.
  void ConvertVlanType(const IntfEntry::VlanType& native, zorl2::protobuf::VlanType& message);
};
