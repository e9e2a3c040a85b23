// The native interface entry as text, one line per member: for comparison and for the messages of
// failing tests. The records themselves offer neither equality nor printing.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "native/intf_entry.h"

namespace zorl2_test {

// "member: value", in the order of declaration.
using Members = std::vector<std::string>;

// Between quotes; what is no printable ASCII as \xHH, so that different strings look different.
inline std::string Quoted(const std::string& text) {
  std::ostringstream out;
  out << '"' << std::hex << std::setfill('0');
  for (const char c : text) {
    const auto octet = static_cast<unsigned char>(c);
    if (octet < 0x20 || octet > 0x7E || c == '"' || c == '\\') {
      out << "\\x" << std::setw(2) << static_cast<unsigned>(octet);
    } else {
      out << c;
    }
  }
  out << '"';
  return out.str();
}

inline std::string Dotted(const zorid_t& id) {
  std::ostringstream out;
  out << unsigned{id.octets[0]} << '.' << unsigned{id.octets[1]} << '.' << unsigned{id.octets[2]}
      << '.' << unsigned{id.octets[3]};
  return out.str();
}

inline Members MembersOf(const IntfEntry::GeneralInfo& info) {
  return {"intf_name: " + Quoted(info.intf_name), "phy_addr: " + Quoted(info.phy_addr),
          "redundancy_group_id: " + std::to_string(info.redundancy_group_id),
          "redundancy_group_phy_addr: " + Quoted(info.redundancy_group_phy_addr),
          "bridge_port_number: " + std::to_string(info.bridge_port_number)};
}

inline Members MembersOf(const IntfEntry::StatusInfo& info) {
  return {"adminStatus: " + std::to_string(info.adminStatus),
          "operationalStatus: " + std::to_string(info.operationalStatus),
          "linkStatus: " + std::to_string(info.linkStatus),
          "operationalSpeed: " + std::to_string(info.operationalSpeed),
          "extraShutdown: " + std::to_string(info.extraShutdown),
          "extraBlocking: " + std::to_string(info.extraBlocking),
          "configShutdown: " + std::to_string(info.configShutdown)};
}

inline Members MembersOf(const IntfEntry::PhysicalInfo& info) {
  return {"intf_mtu: " + std::to_string(info.intf_mtu),
          "eth_speed: " + std::to_string(info.eth_speed),
          "eth_duplex_mode: " + std::to_string(info.eth_duplex_mode)};
}

inline Members MembersOf(const IntfEntry::InterfaceFlags& flags) {
  return {"if_l2_switching: " + std::to_string(flags.if_l2_switching),
          "if_in_bundle: " + std::to_string(flags.if_in_bundle),
          "l2_bundle: " + std::to_string(flags.l2_bundle),
          "l2_sub_if: " + std::to_string(flags.l2_sub_if),
          "point_to_point: " + std::to_string(flags.point_to_point),
          "if_multicast: " + std::to_string(flags.if_multicast)};
}

inline void AppendUnder(const std::string& prefix, const Members& members, Members& all) {
  for (const std::string& member : members) all.push_back(prefix + "." + member);
}

inline Members MembersOf(const IntfEntry::TypeInfo& info) {
  Members all = {"interfaceType: " + std::to_string(info.interfaceType)};
  AppendUnder("interfaceFlags", MembersOf(info.interfaceFlags), all);
  all.push_back("vlanType: " + std::to_string(info.vlanType));
  return all;
}

inline Members MembersOf(const IntfEntry::BlockInfo& info) {
  return {"protocol: " + std::to_string(info.protocol), "state: " + std::to_string(info.state)};
}

inline Members MembersOf(const IntfEntry& entry) {
  Members all = {"id: " + Dotted(entry.getId()), "parent: " + Dotted(entry.getParent())};
  AppendUnder("generalInfo", MembersOf(entry.getGeneralInfo()), all);
  AppendUnder("statusInfo", MembersOf(entry.getStatusInfo()), all);
  AppendUnder("physicalInfo", MembersOf(entry.getPhysicalInfo()), all);
  AppendUnder("typeInfo", MembersOf(entry.getTypeInfo()), all);
  all.push_back("interfaceCategory: " + std::to_string(entry.getInterfaceCategory()));
  int place = 0;
  for (const ProtocolType protocol : entry.getShutdownProtos()) {
    all.push_back("shutdownProtos[" + std::to_string(place++) + "]: " + std::to_string(protocol));
  }
  place = 0;
  for (const IntfEntry::BlockInfo& info : entry.getBlockInfo()) {
    AppendUnder("blockInfo[" + std::to_string(place++) + "]", MembersOf(info), all);
  }
  return all;
}

// The lines that only one side has: "- " for the expected, "+ " for the actual record. Empty when
// every member is equal.
template <typename Record>
std::string NativeDifference(const Record& expected, const Record& actual) {
  const Members wanted = MembersOf(expected);
  const Members got = MembersOf(actual);
  std::string report;
  const auto report_missing = [&report](const char* mark, const Members& from, const Members& in) {
    for (const std::string& line : from) {
      if (std::find(in.begin(), in.end(), line) == in.end()) report += mark + line + "\n";
    }
  };
  report_missing("- ", wanted, got);
  report_missing("+ ", got, wanted);
  return report;
}

// EXPECT_THAT(actual, EqualsNative(expected)), for the entry and for each of its nested records.
MATCHER_P(EqualsNative, expected, negation ? "differs from the record" : "equals the record") {
  const std::string difference = NativeDifference(expected, arg);
  if (!difference.empty()) *result_listener << "\n" << difference;
  return difference.empty();
}

}  // namespace zorl2_test

inline void PrintTo(const zorid_t& id, std::ostream* out) { *out << zorl2_test::Dotted(id); }

template <typename Record>
void PrintMembers(const Record& record, std::ostream* out) {
  for (const std::string& member : zorl2_test::MembersOf(record)) *out << "\n  " << member;
}

inline void PrintTo(const IntfEntry& entry, std::ostream* out) { PrintMembers(entry, out); }
inline void PrintTo(const IntfEntry::GeneralInfo& info, std::ostream* out) {
  PrintMembers(info, out);
}
inline void PrintTo(const IntfEntry::StatusInfo& info, std::ostream* out) {
  PrintMembers(info, out);
}
inline void PrintTo(const IntfEntry::PhysicalInfo& info, std::ostream* out) {
  PrintMembers(info, out);
}
inline void PrintTo(const IntfEntry::InterfaceFlags& flags, std::ostream* out) {
  PrintMembers(flags, out);
}
inline void PrintTo(const IntfEntry::TypeInfo& info, std::ostream* out) { PrintMembers(info, out); }
inline void PrintTo(const IntfEntry::BlockInfo& info, std::ostream* out) {
  PrintMembers(info, out);
}
