// Random interface entries from a seed: the same seed gives the same entries on every machine.
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "interface_entry.pb.h"

namespace zorl2_test {

// Makes messages that say nothing which the record cannot hold: a parent and a bridge port number
// are there, identifiers have four octets, port numbers 16 bits. Such a message comes back equal
// from the way to the record and back.
class EntryGenerator {
 public:
  explicit EntryGenerator(std::uint64_t seed) : random_(seed) {}

  zorl2::protobuf::IntfEntry Next() {
    zorl2::protobuf::IntfEntry entry;
    Fill(*entry.mutable_zorid());
    Fill(*entry.mutable_parent());
    Fill(*entry.mutable_generalinfo());
    Fill(*entry.mutable_statusinfo());
    Fill(*entry.mutable_physicalinfo());
    Fill(*entry.mutable_typeinfo());
    for (std::uint32_t i = Below(6); i > 0; --i) {
      entry.add_shutdownprotos(Member<zorl2::protobuf::ProtocolType>(13));
    }
    for (std::uint32_t i = Below(6); i > 0; --i) {
      zorl2::protobuf::BlockInfo& info = *entry.add_blockinfo();
      info.set_protocol(Member<zorl2::protobuf::ProtocolType>(13));
      info.set_state(Member<zorl2::protobuf::BlockState>(2));
    }
    entry.set_intfcategory(Member<zorl2::protobuf::InterfaceCategory>(5));
    return entry;
  }

 private:
  // The remainder of a whole draw, because the distributions of the standard library differ from
  // one implementation to the next.
  std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(random_() % bound); }

  bool Flag() { return Below(2) == 1; }

  template <typename Enum>
  Enum Member(std::uint32_t count) {
    return static_cast<Enum>(Below(count));
  }

  // Often at an end of the range, where mistakes live.
  std::uint32_t Number() {
    switch (Below(8)) {
      case 0:
        return 0;
      case 1:
        return 0xFFFFFFFF;
      case 2:
        return 0x80000000;
      default:
        return static_cast<std::uint32_t>(random_());
    }
  }

  // Valid UTF-8 of one to four octets each, zero octets included; sometimes longer than what a
  // string holds without allocation.
  std::string Text() {
    static const char* const kCharacters[] = {
        "a", "Z", "0", "/", ":", " ", "\n", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x94\x8C"};
    std::string text;
    for (std::uint32_t length = Below(24); length > 0; --length) {
      const std::uint32_t character = Below(11);
      text += character == 10 ? std::string(1, '\0') : kCharacters[character];
    }
    return text;
  }

  void Fill(zorl2::protobuf::Zorid& id) {
    for (int i = 0; i < 4; ++i) id.add_value(Below(256));
  }

  void Fill(zorl2::protobuf::GeneralInfo& info) {
    info.set_intf_name(Text());
    info.set_phy_addr(Text());
    info.set_bridge_port_number(Below(65536));
    info.set_redundancy_group_id(Number());
    info.set_redundancy_group_phy_addr(Text());
  }

  void Fill(zorl2::protobuf::StatusInfo& info) {
    info.set_adminstatus(Member<zorl2::protobuf::AdminStatus>(2));
    info.set_operationalstatus(Member<zorl2::protobuf::OperationalStatus>(2));
    info.set_linkstatus(Member<zorl2::protobuf::LinkStatus>(2));
    info.set_operationalspeed(Number());
    info.set_extrashutdown(Flag());
    info.set_extrablocking(Flag());
    info.set_configshutdown(Flag());
  }

  void Fill(zorl2::protobuf::PhysicalInfo& info) {
    info.set_intf_mtu(Number());
    info.set_eth_speed(Member<zorl2::protobuf::EthernetSpeed>(12));
    info.set_eth_duplex_mode(Member<zorl2::protobuf::EthernetDuplexMode>(3));
  }

  void Fill(zorl2::protobuf::TypeInfo& info) {
    info.set_interfacetype(Member<zorl2::protobuf::InterfaceType>(5));
    zorl2::protobuf::InterfaceFlags& flags = *info.mutable_interfaceflags();
    flags.set_if_l2_switching(Flag());
    flags.set_if_in_bundle(Flag());
    flags.set_l2_bundle(Flag());
    flags.set_l2_sub_if(Flag());
    flags.set_point_to_point(Flag());
    flags.set_if_multicast(Flag());
    info.set_vlantype(Member<zorl2::protobuf::VlanType>(5));
  }

  std::mt19937_64 random_;
};

}  // namespace zorl2_test
