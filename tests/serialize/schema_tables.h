// The nine schema files as tables, written down by hand: what other programs on the wire were built
// against. A change here is a change of the wire format.
#pragma once

#include <google/protobuf/descriptor.pb.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace zorl2_test {

enum class Label { kRequired, kOptional, kRepeated };

struct Field {
  int number;
  std::string name;
  Label label;
  // A scalar type as in "uint32", or the name of a message or enumeration of the package.
  std::string type;
  bool packed = false;
};

struct Message {
  std::string name;
  std::vector<Field> fields;
};

struct Enum {
  std::string name;
  std::vector<std::pair<std::string, int>> values;
};

struct File {
  std::string name;
  std::vector<std::string> imports;
  std::vector<Message> messages;
  std::vector<Enum> enums;
};

// Names the file in the lists of tests.
inline void PrintTo(const File& file, std::ostream* out) { *out << file.name; }

inline constexpr Label kRequired = Label::kRequired;
inline constexpr Label kOptional = Label::kOptional;
inline constexpr Label kRepeated = Label::kRepeated;

inline std::vector<File> SchemaFiles() {
  return {
      {"zorid.proto", {}, {{"Zorid", {{1, "value", kRepeated, "uint32", true}}}}, {}},

      {"information_client.proto",
       {},
       {{"IntfCategory",
         {{1, "L1", kRequired, "bool"},
          {2, "L2", kRequired, "bool"},
          {3, "VP", kRequired, "bool"},
          {4, "L2_SUB_IF", kRequired, "bool"},
          {5, "VIRTUAL_IF", kRequired, "bool"}}},
        {"InformationClient",
         {{1, "clientAddress", kRequired, "uint64"},
          {2, "protocolType", kRequired, "enum ProtocolType"},
          {3, "intfCategory", kRequired, "IntfCategory"},
          {4, "token", kRequired, "string"}}}},
       {{"ProtocolType",
         {{"PROTOCOL_UNKNOWN", 0},
          {"LLDP", 1},
          {"L2VM", 2},
          {"LACP", 3},
          {"STP", 4},
          {"ERPS", 5},
          {"CFM", 6},
          {"LBD", 7},
          {"LFD", 8},
          {"EFM", 9},
          {"L1_PROTO", 10},
          {"L2_PROTO", 11},
          {"BACKUPLINK", 12}}}}},

      {"intf_state.proto",
       {"zorid.proto", "information_client.proto"},
       {{"ShutStateInfo", {{1, "zorid", kRequired, "Zorid"}, {2, "state", kRequired, "bool"}}},
        {"ShutStateSync",
         {{1, "shutProtocol", kRequired, "enum ProtocolType"},
          {2, "intfs", kRepeated, "ShutStateInfo"}}},
        {"BlockStateInfo",
         {{1, "zorid", kRequired, "Zorid"}, {2, "state", kRequired, "enum BlockState"}}},
        {"BlockStateSync",
         {{1, "blockProtocol", kRequired, "enum ProtocolType"},
          {2, "intfs", kRepeated, "BlockStateInfo"}}},
        {"HoldTimeInstance",
         {{1, "zorid", kRequired, "Zorid"}, {2, "down_ms", kRequired, "uint32"}}},
        {"HoldTimeConfig", {{1, "configs", kRepeated, "HoldTimeInstance"}}}},
       {{"BlockState", {{"BLOCK_STATE_FORWARD", 0}, {"BLOCK_STATE_BLOCK", 1}}}}},

      {"interface_entry.proto",
       {"zorid.proto", "information_client.proto", "intf_state.proto"},
       {{"InterfaceFlags",
         {{1, "if_l2_switching", kRequired, "bool"},
          {2, "if_in_bundle", kRequired, "bool"},
          {3, "l2_bundle", kRequired, "bool"},
          {4, "l2_sub_if", kRequired, "bool"},
          {5, "point_to_point", kRequired, "bool"},
          {6, "if_multicast", kRequired, "bool"}}},
        {"GeneralInfo",
         {{1, "intf_name", kRequired, "string"},
          {2, "phy_addr", kRequired, "string"},
          {3, "bridge_port_number", kOptional, "uint32"},
          {4, "redundancy_group_id", kRequired, "uint32"},
          {5, "redundancy_group_phy_addr", kRequired, "string"}}},
        {"StatusInfo",
         {{1, "adminStatus", kRequired, "enum AdminStatus"},
          {2, "operationalStatus", kRequired, "enum OperationalStatus"},
          {3, "linkStatus", kRequired, "enum LinkStatus"},
          {4, "operationalSpeed", kRequired, "uint32"},
          {5, "extraShutdown", kRequired, "bool"},
          {6, "extraBlocking", kRequired, "bool"},
          {7, "configShutdown", kRequired, "bool"}}},
        {"PhysicalInfo",
         {{1, "intf_mtu", kRequired, "uint32"},
          {2, "eth_speed", kRequired, "enum EthernetSpeed"},
          {3, "eth_duplex_mode", kRequired, "enum EthernetDuplexMode"}}},
        {"TypeInfo",
         {{1, "interfaceType", kRequired, "enum InterfaceType"},
          {2, "interfaceFlags", kRequired, "InterfaceFlags"},
          {3, "vlanType", kRequired, "enum VlanType"}}},
        {"BlockInfo",
         {{1, "protocol", kRequired, "enum ProtocolType"},
          {2, "state", kRequired, "enum BlockState"}}},
        {"IntfEntry",
         {{1, "zorid", kRequired, "Zorid"},
          {2, "parent", kOptional, "Zorid"},
          {3, "generalInfo", kRequired, "GeneralInfo"},
          {4, "statusInfo", kRequired, "StatusInfo"},
          {5, "physicalInfo", kRequired, "PhysicalInfo"},
          {6, "typeInfo", kRequired, "TypeInfo"},
          {7, "shutdownProtos", kRepeated, "enum ProtocolType"},
          {8, "blockInfo", kRepeated, "BlockInfo"},
          {9, "intfCategory", kRequired, "enum InterfaceCategory"}}},
        {"IntfEntryList",
         {{1, "infoClient", kRequired, "InformationClient"},
          {2, "intfEntry", kRepeated, "IntfEntry"}}},
        {"IntfIndication",
         {{1, "indCategory", kRequired, "enum InterfaceCategory"},
          {2, "indType", kRequired, "enum IndicationType"},
          {3, "intfEntry", kRequired, "IntfEntry"}}}},
       {{"VlanType", {{"NONE", 0}, {"C_VLAN", 1}, {"S_VLAN", 2}, {"B_VLAN", 3}, {"ANY", 4}}},
        {"InterfaceType",
         {{"TYPE_UNKNOWN", 0},
          {"OTHER", 1},
          {"ETHERNET", 2},
          {"ETHERNET_L2_VLAN", 3},
          {"ETHERNET_BUNDLE", 4}}},
        {"AdminStatus", {{"IF_ADMIN_UP", 0}, {"IF_ADMIN_DOWN", 1}}},
        {"OperationalStatus", {{"UP", 0}, {"DOWN", 1}}},
        {"LinkStatus", {{"LINK_UP", 0}, {"LINK_DOWN", 1}}},
        {"EthernetSpeed",
         {{"SPEED_UNKNOWN", 0},
          {"SPEED_100_KBS", 1},
          {"SPEED_1_MBS", 2},
          {"SPEED_10_MBS", 3},
          {"SPEED_100_MBS", 4},
          {"SPEED_1_GBS", 5},
          {"SPEED_10_GBS", 6},
          {"SPEED_25_GBS", 7},
          {"SPEED_40_GBS", 8},
          {"SPEED_100_GBS", 9},
          {"SPEED_1_TBS", 10},
          {"SPEED_10_TBS", 11}}},
        {"EthernetDuplexMode", {{"MODE_UNKNOWN", 0}, {"HALF", 1}, {"FULL", 2}}},
        {"InterfaceCategory",
         {{"L1", 0}, {"L2", 1}, {"VP", 2}, {"L2_SUB_IF", 3}, {"VIRTUAL_IF", 4}}},
        {"IndicationType", {{"ADD", 0}, {"UPDATE", 1}, {"DEL", 2}}}}},

      {"lag.proto",
       {"zorid.proto"},
       {{"LagMemberOperationProto",
         {{1, "lag", kOptional, "Zorid"},
          {2, "member", kOptional, "Zorid"},
          {3, "token", kOptional, "uint64"},
          {4, "collecting", kOptional, "bool"},
          {5, "distributing", kOptional, "bool"}}},
        {"LagLoadBalance",
         {{1, "lag", kRequired, "uint32"}, {2, "load_balance", kRequired, "int32"}}},
        {"LagLoadBalanceHashType", {{1, "hash_type", kRequired, "int32"}}},
        {"RedundancyGroupFields",
         {{1, "lag", kRequired, "uint32"},
          {2, "rg_id", kRequired, "int32"},
          {3, "rg_mac", kRequired, "string"}}}},
       {}},

      {"l2_sub_if.proto",
       {"zorid.proto"},
       {{"L2SubinterfaceOperation",
         {{1, "parent", kOptional, "Zorid"}, {2, "subinterface", kOptional, "Zorid"}}}},
       {}},

      {"virtual_if.proto",
       {"zorid.proto"},
       {{"VirtualInterfaceOperation", {{1, "virtualInterface", kRequired, "Zorid"}}}},
       {}},

      {"sysinfo.proto",
       {},
       {{"SysInfo",
         {{1, "sys_mac", kRequired, "string"},
          {2, "sys_name", kRequired, "string"},
          {3, "sys_descr", kRequired, "string"}}},
        {"SysInfoIndication", {{1, "sysInfo", kRequired, "SysInfo"}}}},
       {}},

      {"audit_info.proto",
       {},
       {{"AuditInfo",
         {{1, "internal_caches", kOptional, "string"},
          {2, "interfaces_states", kOptional, "string"}}}},
       {}},
  };
}

}  // namespace zorl2_test
