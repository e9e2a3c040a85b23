// The numbers of the native enumerations, those nested in the interface entry included.
#include "native/l2_enums.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "native/intf_entry.h"

namespace {

// A signed 32-bit number: any such number is a value of the enumeration.
template <typename Enum>
constexpr bool IsSigned32 = std::is_same_v<std::underlying_type_t<Enum>, std::int32_t>;

TEST(NativeEnums, AreSigned32BitNumbers) {
  static_assert(IsSigned32<ProtocolType>);
  static_assert(IsSigned32<BlockState>);
  static_assert(IsSigned32<InterfaceCategory>);
  static_assert(IsSigned32<IntfEntry::AdminStatus>);
  static_assert(IsSigned32<IntfEntry::OperationalStatus>);
  static_assert(IsSigned32<IntfEntry::LinkStatus>);
  static_assert(IsSigned32<IntfEntry::EthernetSpeed>);
  static_assert(IsSigned32<IntfEntry::EthernetDuplexMode>);
  static_assert(IsSigned32<IntfEntry::InterfaceType>);
  static_assert(IsSigned32<IntfEntry::VlanType>);
}

TEST(NativeEnums, ProtocolType_StartsWithLldpAndEndsWithTheUnknownProtocol) {
  EXPECT_EQ(LLDP, 0);
  EXPECT_EQ(L2VM, 1);
  EXPECT_EQ(LACP, 2);
  EXPECT_EQ(STP, 3);
  EXPECT_EQ(ERPS, 4);
  EXPECT_EQ(CFM, 5);
  EXPECT_EQ(LBD, 6);
  EXPECT_EQ(LFD, 7);
  EXPECT_EQ(EFM, 8);
  EXPECT_EQ(L1_PROTO, 9);
  EXPECT_EQ(L2_PROTO, 10);
  EXPECT_EQ(BACKUPLINK, 11);
  EXPECT_EQ(PROTOCOL_UNKNOWN, 12);
}

TEST(NativeEnums, BlockState) {
  EXPECT_EQ(BLOCK_STATE_FORWARD, 0);
  EXPECT_EQ(BLOCK_STATE_BLOCK, 1);
}

TEST(NativeEnums, InterfaceCategory) {
  EXPECT_EQ(L1, 0);
  EXPECT_EQ(L2, 1);
  EXPECT_EQ(VP, 2);
  EXPECT_EQ(L2_SUB_IF, 3);
  EXPECT_EQ(VIRTUAL_IF, 4);
}

TEST(NativeEnums, TheThreeStates) {
  EXPECT_EQ(IntfEntry::IF_ADMIN_UP, 0);
  EXPECT_EQ(IntfEntry::IF_ADMIN_DOWN, 1);
  EXPECT_EQ(IntfEntry::UP, 0);
  EXPECT_EQ(IntfEntry::DOWN, 1);
  EXPECT_EQ(IntfEntry::LINK_UP, 0);
  EXPECT_EQ(IntfEntry::LINK_DOWN, 1);
}

TEST(NativeEnums, DuplexMode_InterfaceType_VlanType) {
  EXPECT_EQ(IntfEntry::MODE_UNKNOWN, 0);
  EXPECT_EQ(IntfEntry::HALF, 1);
  EXPECT_EQ(IntfEntry::FULL, 2);
  EXPECT_EQ(IntfEntry::TYPE_UNKNOWN, 0);
  EXPECT_EQ(IntfEntry::OTHER, 1);
  EXPECT_EQ(IntfEntry::ETHERNET, 2);
  EXPECT_EQ(IntfEntry::ETHERNET_L2_VLAN, 3);
  EXPECT_EQ(IntfEntry::ETHERNET_BUNDLE, 4);
  EXPECT_EQ(IntfEntry::NONE, 0);
  EXPECT_EQ(IntfEntry::C_VLAN, 1);
  EXPECT_EQ(IntfEntry::S_VLAN, 2);
  EXPECT_EQ(IntfEntry::B_VLAN, 3);
  EXPECT_EQ(IntfEntry::ANY, 4);
}

TEST(NativeEnums, EthernetSpeed) {
  EXPECT_EQ(IntfEntry::SPEED_UNKNOWN, 0);
  EXPECT_EQ(IntfEntry::SPEED_100_KBS, 1);
  EXPECT_EQ(IntfEntry::SPEED_1_MBS, 2);
  EXPECT_EQ(IntfEntry::SPEED_10_MBS, 3);
  EXPECT_EQ(IntfEntry::SPEED_100_MBS, 4);
  EXPECT_EQ(IntfEntry::SPEED_1_GBS, 5);
  EXPECT_EQ(IntfEntry::SPEED_10_GBS, 6);
  EXPECT_EQ(IntfEntry::SPEED_25_GBS, 7);
  EXPECT_EQ(IntfEntry::SPEED_40_GBS, 8);
  EXPECT_EQ(IntfEntry::SPEED_100_GBS, 9);
  EXPECT_EQ(IntfEntry::SPEED_1_TBS, 10);
  EXPECT_EQ(IntfEntry::SPEED_10_TBS, 11);
}

}  // namespace
