// Not installed. The seven enumerations nested in IntfEntry and the category: each message value
// with its native value, in one list that both directions read.
#pragma once

#include <boost/throw_exception.hpp>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>

#include "interface_entry.pb.h"
#include "native/intf_entry.h"

namespace zorl2_mapping {

template <typename Message, typename Native>
struct EnumPair {
  Message message;
  Native native;
};

inline constexpr EnumPair<zorl2::protobuf::AdminStatus, IntfEntry::AdminStatus>
    kAdminStatusPairs[] = {
        {zorl2::protobuf::IF_ADMIN_UP, IntfEntry::IF_ADMIN_UP},
        {zorl2::protobuf::IF_ADMIN_DOWN, IntfEntry::IF_ADMIN_DOWN},
};

inline constexpr EnumPair<zorl2::protobuf::OperationalStatus, IntfEntry::OperationalStatus>
    kOperationalStatusPairs[] = {
        {zorl2::protobuf::UP, IntfEntry::UP},
        {zorl2::protobuf::DOWN, IntfEntry::DOWN},
};

inline constexpr EnumPair<zorl2::protobuf::LinkStatus, IntfEntry::LinkStatus> kLinkStatusPairs[] = {
    {zorl2::protobuf::LINK_UP, IntfEntry::LINK_UP},
    {zorl2::protobuf::LINK_DOWN, IntfEntry::LINK_DOWN},
};

inline constexpr EnumPair<zorl2::protobuf::EthernetSpeed, IntfEntry::EthernetSpeed>
    kEthernetSpeedPairs[] = {
        {zorl2::protobuf::SPEED_UNKNOWN, IntfEntry::SPEED_UNKNOWN},
        {zorl2::protobuf::SPEED_100_KBS, IntfEntry::SPEED_100_KBS},
        {zorl2::protobuf::SPEED_1_MBS, IntfEntry::SPEED_1_MBS},
        {zorl2::protobuf::SPEED_10_MBS, IntfEntry::SPEED_10_MBS},
        {zorl2::protobuf::SPEED_100_MBS, IntfEntry::SPEED_100_MBS},
        {zorl2::protobuf::SPEED_1_GBS, IntfEntry::SPEED_1_GBS},
        {zorl2::protobuf::SPEED_10_GBS, IntfEntry::SPEED_10_GBS},
        {zorl2::protobuf::SPEED_25_GBS, IntfEntry::SPEED_25_GBS},
        {zorl2::protobuf::SPEED_40_GBS, IntfEntry::SPEED_40_GBS},
        {zorl2::protobuf::SPEED_100_GBS, IntfEntry::SPEED_100_GBS},
        {zorl2::protobuf::SPEED_1_TBS, IntfEntry::SPEED_1_TBS},
        {zorl2::protobuf::SPEED_10_TBS, IntfEntry::SPEED_10_TBS},
};

inline constexpr EnumPair<zorl2::protobuf::EthernetDuplexMode, IntfEntry::EthernetDuplexMode>
    kDuplexModePairs[] = {
        {zorl2::protobuf::MODE_UNKNOWN, IntfEntry::MODE_UNKNOWN},
        {zorl2::protobuf::HALF, IntfEntry::HALF},
        {zorl2::protobuf::FULL, IntfEntry::FULL},
};

inline constexpr EnumPair<zorl2::protobuf::InterfaceType, IntfEntry::InterfaceType>
    kInterfaceTypePairs[] = {
        {zorl2::protobuf::TYPE_UNKNOWN, IntfEntry::TYPE_UNKNOWN},
        {zorl2::protobuf::OTHER, IntfEntry::OTHER},
        {zorl2::protobuf::ETHERNET, IntfEntry::ETHERNET},
        {zorl2::protobuf::ETHERNET_L2_VLAN, IntfEntry::ETHERNET_L2_VLAN},
        {zorl2::protobuf::ETHERNET_BUNDLE, IntfEntry::ETHERNET_BUNDLE},
};

inline constexpr EnumPair<zorl2::protobuf::VlanType, IntfEntry::VlanType> kVlanTypePairs[] = {
    {zorl2::protobuf::NONE, IntfEntry::NONE},     {zorl2::protobuf::C_VLAN, IntfEntry::C_VLAN},
    {zorl2::protobuf::S_VLAN, IntfEntry::S_VLAN}, {zorl2::protobuf::B_VLAN, IntfEntry::B_VLAN},
    {zorl2::protobuf::ANY, IntfEntry::ANY},
};

inline constexpr EnumPair<zorl2::protobuf::InterfaceCategory, InterfaceCategory>
    kInterfaceCategoryPairs[] = {
        {zorl2::protobuf::L1, L1},
        {zorl2::protobuf::L2, L2},
        {zorl2::protobuf::VP, VP},
        {zorl2::protobuf::L2_SUB_IF, L2_SUB_IF},
        {zorl2::protobuf::VIRTUAL_IF, VIRTUAL_IF},
};

// Both sides count from zero without a gap, so a value is its own place in the list.
template <typename Message, typename Native, std::size_t kCount>
constexpr bool IsDense(const EnumPair<Message, Native> (&pairs)[kCount]) {
  for (std::size_t i = 0; i < kCount; ++i) {
    if (static_cast<std::size_t>(pairs[i].message) != i) return false;
    if (static_cast<std::size_t>(pairs[i].native) != i) return false;
  }
  return true;
}

[[noreturn]] inline void RejectValue() {
  boost::throw_exception(std::out_of_range("bimap<>: invalid key"));
}

[[noreturn]] inline void RejectCategory() { throw std::out_of_range("map::at"); }

// Translates one enumeration. An unlisted value is rejected with kReject, which throws.
template <const auto& kPairs, void (*kReject)() = RejectValue>
struct EnumTable {
  static_assert(IsDense(kPairs), "a value must be its own place in the list");

  using Message = decltype(kPairs[0].message);
  using Native = decltype(kPairs[0].native);

  static Native ToNative(Message value) {
    const auto place = static_cast<std::uint32_t>(value);
    if (place >= std::size(kPairs)) kReject();
    return kPairs[place].native;
  }

  static Message ToMessage(Native value) {
    const auto place = static_cast<std::uint32_t>(value);
    if (place >= std::size(kPairs)) kReject();
    return kPairs[place].message;
  }
};

using AdminStatusTable = EnumTable<kAdminStatusPairs>;
using OperationalStatusTable = EnumTable<kOperationalStatusPairs>;
using LinkStatusTable = EnumTable<kLinkStatusPairs>;
using EthernetSpeedTable = EnumTable<kEthernetSpeedPairs>;
using DuplexModeTable = EnumTable<kDuplexModePairs>;
using InterfaceTypeTable = EnumTable<kInterfaceTypePairs>;
using VlanTypeTable = EnumTable<kVlanTypePairs>;
using InterfaceCategoryTable = EnumTable<kInterfaceCategoryPairs, RejectCategory>;

}  // namespace zorl2_mapping
