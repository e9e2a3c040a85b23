/// \file
/// The native record of one layer-2 interface.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>

#include "native/export.h"
#include "native/l2_enums.h"
#include "native/zorid.h"

class IntfEntryBuilder;
class IntfEntryConverter;

/// An interface entry. Callers read it through its getters and write it with IntfEntryBuilder;
/// IntfEntryConverter updates it in place. An entry owns its strings and list nodes. A
/// default-constructed entry has empty strings and lists, and all of its numbers are zero. A
/// moved-from entry has empty strings and lists and keeps its numbers.
///
/// The manager shares the layout with this library: neither the order nor the width of a member may
/// change. The enumerations have the numbers of the message.
///
/// Thread safety: any number of threads may read an entry that no thread assigns to or converts
/// into.
class ZORL2_EXPORT IntfEntry {
 public:
  /// The state that the configuration requests.
  enum AdminStatus : std::int32_t {
    IF_ADMIN_UP = 0,    ///< Enabled.
    IF_ADMIN_DOWN = 1,  ///< Disabled.
  };

  /// Whether the interface passes traffic.
  enum OperationalStatus : std::int32_t {
    UP = 0,    ///< It does.
    DOWN = 1,  ///< It does not.
  };

  /// Whether the link is established.
  enum LinkStatus : std::int32_t {
    LINK_UP = 0,    ///< It is.
    LINK_DOWN = 1,  ///< It is not.
  };

  /// The nominal speed class of a port. speedKbpsTable has the rates.
  enum EthernetSpeed : std::int32_t {
    SPEED_UNKNOWN = 0,  ///< Not known.
    SPEED_100_KBS = 1,  ///< 100 kbit/s.
    SPEED_1_MBS = 2,    ///< 1 Mbit/s.
    SPEED_10_MBS = 3,   ///< 10 Mbit/s.
    SPEED_100_MBS = 4,  ///< 100 Mbit/s.
    SPEED_1_GBS = 5,    ///< 1 Gbit/s.
    SPEED_10_GBS = 6,   ///< 10 Gbit/s.
    SPEED_25_GBS = 7,   ///< 25 Gbit/s.
    SPEED_40_GBS = 8,   ///< 40 Gbit/s.
    SPEED_100_GBS = 9,  ///< 100 Gbit/s.
    SPEED_1_TBS = 10,   ///< 1 Tbit/s.
    SPEED_10_TBS = 11,  ///< 10 Tbit/s.
  };

  /// Whether both ends may send at once.
  enum EthernetDuplexMode : std::int32_t {
    MODE_UNKNOWN = 0,  ///< Not known.
    HALF = 1,          ///< Half duplex.
    FULL = 2,          ///< Full duplex.
  };

  /// The kind of interface.
  enum InterfaceType : std::int32_t {
    TYPE_UNKNOWN = 0,      ///< Not known.
    OTHER = 1,             ///< None of the following.
    ETHERNET = 2,          ///< Ethernet port.
    ETHERNET_L2_VLAN = 3,  ///< Layer-2 VLAN on Ethernet.
    ETHERNET_BUNDLE = 4,   ///< Aggregation of Ethernet ports.
  };

  /// The tags of the frames on the interface.
  enum VlanType : std::int32_t {
    NONE = 0,    ///< No VLAN type.
    C_VLAN = 1,  ///< Customer tag.
    S_VLAN = 2,  ///< Service tag.
    B_VLAN = 3,  ///< Backbone tag.
    ANY = 4,     ///< Any of them.
  };

  /// Names and addresses, as text of any length and format. The bridge port number has 16 bits here
  /// and 32 in the message.
  struct GeneralInfo {
    std::string intf_name;                  ///< The name of the interface.
    std::string phy_addr;                   ///< The physical address.
    std::uint32_t redundancy_group_id = 0;  ///< The number of the redundancy group.
    std::string redundancy_group_phy_addr;  ///< The redundancy group's physical address.
    std::uint16_t bridge_port_number = 0;   ///< Zero if a message had none.
  };

  /// Status and speed. The operational speed is an opaque number to this library: conversions copy
  /// it, and do not scale it or compare it with the speed table.
  struct StatusInfo {
    AdminStatus adminStatus = IF_ADMIN_UP;     ///< The state that the configuration requests.
    OperationalStatus operationalStatus = UP;  ///< Whether the interface passes traffic.
    LinkStatus linkStatus = LINK_UP;           ///< Whether the link is established.
    std::uint32_t operationalSpeed = 0;        ///< Opaque.
    bool extraShutdown = false;                ///< An additional shutdown is in force.
    bool extraBlocking = false;                ///< An additional blocking is in force.
    bool configShutdown = false;               ///< Shut down by configuration.
  };

  /// MTU, speed and duplex mode. The MTU has 64 bits here and 32 in the message.
  struct PhysicalInfo {
    std::uint64_t intf_mtu = 0;                         ///< In bytes.
    EthernetSpeed eth_speed = SPEED_UNKNOWN;            ///< The nominal speed class.
    EthernetDuplexMode eth_duplex_mode = MODE_UNKNOWN;  ///< The duplex mode.
  };

  /// The layer-2 properties of an interface.
  struct InterfaceFlags {
    bool if_l2_switching = false;  ///< Switches frames.
    bool if_in_bundle = false;     ///< Belongs to a bundle.
    bool l2_bundle = false;        ///< Is a bundle.
    bool l2_sub_if = false;        ///< Is a sub-interface.
    bool point_to_point = false;   ///< Has one peer.
    bool if_multicast = false;     ///< Accepts multicast frames.
  };

  /// What kind of interface this is.
  struct TypeInfo {
    InterfaceType interfaceType = TYPE_UNKNOWN;  ///< The kind of interface.
    InterfaceFlags interfaceFlags;               ///< Its layer-2 properties.
    VlanType vlanType = NONE;                    ///< The tags of its frames.
  };

  /// The blocking state that one protocol imposes on the interface.
  struct BlockInfo {
    ProtocolType protocol = LLDP;            ///< The protocol.
    BlockState state = BLOCK_STATE_FORWARD;  ///< The state that it imposes.
  };

  // The getters copy nothing and throw nothing. A reference is valid until the entry is destroyed;
  // what it refers to changes when the entry is assigned to or converted into.

  /// Returns the interface's own identifier.
  const zorid_t& getId() const;
  /// Returns the parent's identifier; all zero if there is no parent or its identifier is all zero.
  const zorid_t& getParent() const;
  /// Returns names and addresses.
  const GeneralInfo& getGeneralInfo() const;
  /// Returns status and speed.
  const StatusInfo& getStatusInfo() const;
  /// Returns MTU, speed class and duplex mode.
  const PhysicalInfo& getPhysicalInfo() const;
  /// Returns kind, flags and tags.
  const TypeInfo& getTypeInfo() const;
  /// Returns the protocols that shut the interface down, in insertion order, duplicates included.
  const std::list<ProtocolType>& getShutdownProtos() const;
  /// Returns the blocking states in insertion order; a protocol may have several.
  const std::list<BlockInfo>& getBlockInfo() const;
  /// Returns the category.
  InterfaceCategory getInterfaceCategory() const;

 private:
  friend class IntfEntryBuilder;
  friend class IntfEntryConverter;

  zorid_t id;
  zorid_t parent;
  GeneralInfo generalInfo;
  StatusInfo statusInfo;
  PhysicalInfo physicalInfo;
  TypeInfo typeInfo;
  InterfaceCategory interfaceCategory = L1;
  std::list<ProtocolType> shutdownProtos;
  std::list<BlockInfo> blockInfo;
};

/// The rate of each speed class in kbit/s. The last rate is 10,000,000,000 reduced modulo 2^32: the
/// rate does not fit 32 bits, and the wrapped number is kept. Each translation unit that includes
/// this header has its own copy. The library does not read the table.
const std::map<IntfEntry::EthernetSpeed, unsigned int> speedKbpsTable = {
    {IntfEntry::SPEED_UNKNOWN, 0},        {IntfEntry::SPEED_100_KBS, 100},
    {IntfEntry::SPEED_1_MBS, 1000},       {IntfEntry::SPEED_10_MBS, 10000},
    {IntfEntry::SPEED_100_MBS, 100000},   {IntfEntry::SPEED_1_GBS, 1000000},
    {IntfEntry::SPEED_10_GBS, 10000000},  {IntfEntry::SPEED_25_GBS, 25000000},
    {IntfEntry::SPEED_40_GBS, 40000000},  {IntfEntry::SPEED_100_GBS, 100000000},
    {IntfEntry::SPEED_1_TBS, 1000000000}, {IntfEntry::SPEED_10_TBS, 1410065408},
};
