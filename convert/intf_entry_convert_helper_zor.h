/// \file
/// Converts the parts of an interface entry, native to message.
#pragma once

#include "interface_entry.pb.h"
#include "native/export.h"
#include "native/intf_entry.h"

/// Converts nested native records and enumerations to their message counterparts.
///
/// The functions for records set every field of the message, in the order of the fields, and do not
/// clear it first: unknown fields remain. After an exception the fields before the failing one are
/// set.
///
/// The functions for enumerations translate a listed value to the value of the same name. For an
/// unlisted value they throw boost::wrapexcept<std::out_of_range> ("bimap<>: invalid key") and
/// leave the output unchanged.
///
/// Throws: as above, and std::bad_alloc.
/// Thread safety: no state; any number of threads may share an object.
class ZORL2_EXPORT IntfEntryConvertHelperZOR {
 public:
  /// Converts names and addresses. The bridge port number is always present afterwards.
  void ConvertGeneralInfo(const IntfEntry::GeneralInfo& native,
                          zorl2::protobuf::GeneralInfo& message);
  /// Converts the flags.
  void ConvertInterfaceFlags(const IntfEntry::InterfaceFlags& native,
                             zorl2::protobuf::InterfaceFlags& message);
  /// Converts a blocking state.
  /// Lossy: an unlisted protocol becomes PROTOCOL_UNKNOWN, a state other than 1
  /// BLOCK_STATE_FORWARD.
  void ConvertBlockInfo(const IntfEntry::BlockInfo& native, zorl2::protobuf::BlockInfo& message);
  /// Converts status and speed. Translates all three states before it sets a field, so an exception
  /// leaves the message unchanged.
  void ConvertStatusInfo(const IntfEntry::StatusInfo& native, zorl2::protobuf::StatusInfo& message);
  /// Converts MTU, speed class and duplex mode.
  /// Lossy: keeps the low 32 bits of the MTU.
  void ConvertPhysicalInfo(const IntfEntry::PhysicalInfo& native,
                           zorl2::protobuf::PhysicalInfo& message);
  /// Converts kind, flags and tags. Replaces the nested flags, their unknown fields included.
  void ConvertTypeInfo(const IntfEntry::TypeInfo& native, zorl2::protobuf::TypeInfo& message);

  /// Translates an administrative status.
  void ConvertAdminStatus(const IntfEntry::AdminStatus& native,
                          zorl2::protobuf::AdminStatus& message);
  /// Translates an operational status.
  void ConvertOperationalStatus(const IntfEntry::OperationalStatus& native,
                                zorl2::protobuf::OperationalStatus& message);
  /// Translates a link status.
  void ConvertLinkStatus(const IntfEntry::LinkStatus& native, zorl2::protobuf::LinkStatus& message);
  /// Translates a speed class.
  void ConvertEthernetSpeed(const IntfEntry::EthernetSpeed& native,
                            zorl2::protobuf::EthernetSpeed& message);
  /// Translates a duplex mode.
  void ConvertDuplexMode(const IntfEntry::EthernetDuplexMode& native,
                         zorl2::protobuf::EthernetDuplexMode& message);
  /// Translates an interface type.
  void ConvertInterfaceType(const IntfEntry::InterfaceType& native,
                            zorl2::protobuf::InterfaceType& message);
  /// Translates a VLAN type.
  void ConvertVlanType(const IntfEntry::VlanType& native, zorl2::protobuf::VlanType& message);
};
