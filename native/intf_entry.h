// The manager's in-memory description of one layer-2 interface.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>

#include "native/export.h"
#include "native/l2_enums.h"
#include "native/zorid.h"

class IntfEntryBuilder;

// Read through the getters, written by IntfEntryBuilder alone. Owns its strings and list nodes;
// copy and move are member by member, a moved-from entry has empty strings and lists and keeps its
// numbers. A default-constructed entry is empty and zero throughout.
//
// The members stand in an order that the manager shares with this library: neither the order nor
// a width may change. The enumerations are numbered as on the wire.
//
// Any number of threads may read an entry that nobody assigns to.
class ZORL2_EXPORT IntfEntry {
 public:
  enum AdminStatus : std::int32_t {
    IF_ADMIN_UP = 0,
    IF_ADMIN_DOWN = 1,
  };

  enum OperationalStatus : std::int32_t {
    UP = 0,
    DOWN = 1,
  };

  enum LinkStatus : std::int32_t {
    LINK_UP = 0,
    LINK_DOWN = 1,
  };

  // The nominal speed class of a port; speedKbpsTable below gives its rate.
  enum EthernetSpeed : std::int32_t {
    SPEED_UNKNOWN = 0,
    SPEED_100_KBS = 1,
    SPEED_1_MBS = 2,
    SPEED_10_MBS = 3,
    SPEED_100_MBS = 4,
    SPEED_1_GBS = 5,
    SPEED_10_GBS = 6,
    SPEED_25_GBS = 7,
    SPEED_40_GBS = 8,
    SPEED_100_GBS = 9,
    SPEED_1_TBS = 10,
    SPEED_10_TBS = 11,
  };

  enum EthernetDuplexMode : std::int32_t {
    MODE_UNKNOWN = 0,
    HALF = 1,
    FULL = 2,
  };

  enum InterfaceType : std::int32_t {
    TYPE_UNKNOWN = 0,
    OTHER = 1,
    ETHERNET = 2,
    ETHERNET_L2_VLAN = 3,
    ETHERNET_BUNDLE = 4,
  };

  enum VlanType : std::int32_t {
    NONE = 0,
    C_VLAN = 1,
    S_VLAN = 2,
    B_VLAN = 3,
    ANY = 4,
  };

  // Names and addresses, as text of any length and format. The bridge port number comes last here
  // and third in the message; it is 16 bits wide here and 32 there.
  struct GeneralInfo {
    std::string intf_name;
    std::string phy_addr;
    std::uint32_t redundancy_group_id = 0;
    std::string redundancy_group_phy_addr;
    std::uint16_t bridge_port_number = 0;
  };

  // Status and speed. The operational speed is copied as it stands, never scaled and never
  // compared with the speed table; the manager keeps it in kbit/s.
  struct StatusInfo {
    AdminStatus adminStatus = IF_ADMIN_UP;
    OperationalStatus operationalStatus = UP;
    LinkStatus linkStatus = LINK_UP;
    std::uint32_t operationalSpeed = 0;
    bool extraShutdown = false;
    bool extraBlocking = false;
    bool configShutdown = false;
  };

  // The MTU in octets is 64 bits wide here and 32 in the message.
  struct PhysicalInfo {
    std::uint64_t intf_mtu = 0;
    EthernetSpeed eth_speed = SPEED_UNKNOWN;
    EthernetDuplexMode eth_duplex_mode = MODE_UNKNOWN;
  };

  struct InterfaceFlags {
    bool if_l2_switching = false;
    bool if_in_bundle = false;
    bool l2_bundle = false;
    bool l2_sub_if = false;
    bool point_to_point = false;
    bool if_multicast = false;
  };

  struct TypeInfo {
    InterfaceType interfaceType = TYPE_UNKNOWN;
    InterfaceFlags interfaceFlags;
    VlanType vlanType = NONE;
  };

  // The blocking state that one protocol imposes on the interface.
  struct BlockInfo {
    ProtocolType protocol = LLDP;
    BlockState state = BLOCK_STATE_FORWARD;
  };

  // The getters copy nothing and never throw. A reference stays valid until the entry is assigned
  // to or destroyed.

  const zorid_t& getId() const;
  // All zero when the interface has no parent: the record cannot tell the two apart.
  const zorid_t& getParent() const;
  const GeneralInfo& getGeneralInfo() const;
  const StatusInfo& getStatusInfo() const;
  const PhysicalInfo& getPhysicalInfo() const;
  const TypeInfo& getTypeInfo() const;
  // The protocols that keep the interface shut, in insertion order, duplicates included.
  const std::list<ProtocolType>& getShutdownProtos() const;
  // In insertion order; nothing enforces one element per protocol.
  const std::list<BlockInfo>& getBlockInfo() const;
  InterfaceCategory getInterfaceCategory() const;

 private:
  friend class IntfEntryBuilder;

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

// The rate of each speed class in kbit/s. The last rate is 10,000,000,000 reduced modulo 2^32: ten
// terabits do not fit the table's 32 bits, and the manager relies on the wrapped number, so it is
// kept as it is.
const std::map<IntfEntry::EthernetSpeed, unsigned int> speedKbpsTable = {
    {IntfEntry::SPEED_UNKNOWN, 0},        {IntfEntry::SPEED_100_KBS, 100},
    {IntfEntry::SPEED_1_MBS, 1000},       {IntfEntry::SPEED_10_MBS, 10000},
    {IntfEntry::SPEED_100_MBS, 100000},   {IntfEntry::SPEED_1_GBS, 1000000},
    {IntfEntry::SPEED_10_GBS, 10000000},  {IntfEntry::SPEED_25_GBS, 25000000},
    {IntfEntry::SPEED_40_GBS, 40000000},  {IntfEntry::SPEED_100_GBS, 100000000},
    {IntfEntry::SPEED_1_TBS, 1000000000}, {IntfEntry::SPEED_10_TBS, 1410065408},
};
