/// \file
/// Converts the parts of an interface entry, message to native.
#pragma once

#include "interface_entry.pb.h"
#include "native/export.h"
#include "native/intf_entry.h"

/// Converts nested messages and enumerations to their native counterparts.
///
/// The functions for records return false if the message lacks a required field; the record is then
/// unchanged. They write in the order of the fields. After an exception the members before the
/// failing one are written.
///
/// The functions for enumerations translate a listed value to the value of the same name and return
/// true. For an unlisted value they throw boost::wrapexcept<std::out_of_range> ("bimap<>: invalid
/// key") and leave the output unchanged. Parsing stores no unlisted value in a field.
///
/// Throws: as above, and std::bad_alloc.
/// Thread safety: no state; any number of threads may share an object.
class ZORL2_EXPORT IntfEntryConvertHelperProtobuf {
 public:
  /// Converts names and addresses. An absent bridge port number leaves that member unchanged.
  /// Lossy: keeps the low 16 bits of the bridge port number.
  bool ConvertGeneralInfo(const zorl2::protobuf::GeneralInfo& message,
                          IntfEntry::GeneralInfo& native);
  /// Converts MTU, speed class and duplex mode.
  bool ConvertPhysicalInfo(const zorl2::protobuf::PhysicalInfo& message,
                           IntfEntry::PhysicalInfo& native);
  /// Converts status and speed.
  bool ConvertStatusInfo(const zorl2::protobuf::StatusInfo& message, IntfEntry::StatusInfo& native);
  /// Converts the flags.
  bool ConvertInterfaceFlags(const zorl2::protobuf::InterfaceFlags& message,
                             IntfEntry::InterfaceFlags& native);
  /// Converts kind, flags and tags.
  bool ConvertTypeInfo(const zorl2::protobuf::TypeInfo& message, IntfEntry::TypeInfo& native);
  /// Converts a blocking state.
  /// Lossy: an unlisted protocol becomes PROTOCOL_UNKNOWN, a state other than 1
  /// BLOCK_STATE_FORWARD.
  bool ConvertBlockInfo(const zorl2::protobuf::BlockInfo& message, IntfEntry::BlockInfo& native);

  /// Translates an administrative status.
  bool ConvertAdminStatus(const zorl2::protobuf::AdminStatus& message,
                          IntfEntry::AdminStatus& native);
  /// Translates an operational status.
  bool ConvertOperationalStatus(const zorl2::protobuf::OperationalStatus& message,
                                IntfEntry::OperationalStatus& native);
  /// Translates a link status.
  bool ConvertLinkStatus(const zorl2::protobuf::LinkStatus& message, IntfEntry::LinkStatus& native);
  /// Translates a speed class.
  bool ConvertEthernetSpeed(const zorl2::protobuf::EthernetSpeed& message,
                            IntfEntry::EthernetSpeed& native);
  /// Translates a duplex mode.
  bool ConvertDuplexMode(const zorl2::protobuf::EthernetDuplexMode& message,
                         IntfEntry::EthernetDuplexMode& native);
  /// Translates an interface type.
  bool ConvertInterfaceType(const zorl2::protobuf::InterfaceType& message,
                            IntfEntry::InterfaceType& native);
  /// Translates a VLAN type.
  bool ConvertVlanType(const zorl2::protobuf::VlanType& message, IntfEntry::VlanType& native);
};
