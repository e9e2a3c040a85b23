// Sizes and offsets of every native record: the manager was compiled against the same ones.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <type_traits>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_entry_builder.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"

namespace {

static_assert(sizeof(std::string) == 32 && sizeof(std::list<ProtocolType>) == 24 &&
                  sizeof(std::map<zorid_t, bool>) == 48 &&
                  sizeof(std::set<InterfaceCategory>) == 48,
              "the offsets below are those of 64-bit libstdc++");

// For the records that own maps or hide their members, where offsetof is not available.
template <typename Record>
std::ptrdiff_t Distance(const Record& record, const void* member) {
  return static_cast<const char*>(member) - reinterpret_cast<const char*>(&record);
}

TEST(Layout, IntfEntry) {
  static_assert(sizeof(IntfEntry) == 232);
  static_assert(alignof(IntfEntry) == 8);
  static_assert(!std::is_polymorphic_v<IntfEntry>);
  const IntfEntry entry;
  EXPECT_EQ(Distance(entry, &entry.getId()), 0);
  EXPECT_EQ(Distance(entry, &entry.getParent()), 4);
  EXPECT_EQ(Distance(entry, &entry.getGeneralInfo()), 8);
  EXPECT_EQ(Distance(entry, &entry.getStatusInfo()), 120);
  EXPECT_EQ(Distance(entry, &entry.getPhysicalInfo()), 144);
  EXPECT_EQ(Distance(entry, &entry.getTypeInfo()), 160);
  EXPECT_EQ(Distance(entry, &entry.getShutdownProtos()), 184);
  EXPECT_EQ(Distance(entry, &entry.getBlockInfo()), 208);
}

// The category is private, so the test reads the bytes of the record.
TEST(Layout, IntfEntry_TheCategoryPrecedesTheLists) {
  IntfEntryBuilder builder;
  builder.setInterfaceCategory(static_cast<InterfaceCategory>(0x4A5B6C7D));
  const IntfEntry entry = builder.Build();
  std::int32_t stored;
  std::memcpy(&stored, reinterpret_cast<const char*>(&entry) + 176, sizeof(stored));
  EXPECT_EQ(stored, 0x4A5B6C7D);
}

TEST(Layout, IntfEntry_IsCopiedAndMovedMemberByMember) {
  static_assert(std::is_default_constructible_v<IntfEntry>);
  static_assert(std::is_copy_constructible_v<IntfEntry> && std::is_copy_assignable_v<IntfEntry>);
  static_assert(std::is_nothrow_move_constructible_v<IntfEntry>);
  static_assert(std::is_nothrow_move_assignable_v<IntfEntry>);
  static_assert(!std::is_aggregate_v<IntfEntry>, "the members are not public");
}

TEST(Layout, GeneralInfo) {
  using GeneralInfo = IntfEntry::GeneralInfo;
  static_assert(sizeof(GeneralInfo) == 112);
  static_assert(std::is_aggregate_v<GeneralInfo> && !std::is_trivially_copyable_v<GeneralInfo>);
  static_assert(std::is_same_v<decltype(GeneralInfo::redundancy_group_id), std::uint32_t>);
  static_assert(std::is_same_v<decltype(GeneralInfo::bridge_port_number), std::uint16_t>);
  EXPECT_EQ(offsetof(GeneralInfo, intf_name), 0U);
  EXPECT_EQ(offsetof(GeneralInfo, phy_addr), 32U);
  EXPECT_EQ(offsetof(GeneralInfo, redundancy_group_id), 64U);
  EXPECT_EQ(offsetof(GeneralInfo, redundancy_group_phy_addr), 72U);
  EXPECT_EQ(offsetof(GeneralInfo, bridge_port_number), 104U);
}

TEST(Layout, StatusInfo) {
  using StatusInfo = IntfEntry::StatusInfo;
  static_assert(sizeof(StatusInfo) == 20);
  static_assert(std::is_aggregate_v<StatusInfo> && std::is_trivially_copyable_v<StatusInfo>);
  static_assert(std::is_same_v<decltype(StatusInfo::operationalSpeed), std::uint32_t>);
  EXPECT_EQ(offsetof(StatusInfo, adminStatus), 0U);
  EXPECT_EQ(offsetof(StatusInfo, operationalStatus), 4U);
  EXPECT_EQ(offsetof(StatusInfo, linkStatus), 8U);
  EXPECT_EQ(offsetof(StatusInfo, operationalSpeed), 12U);
  EXPECT_EQ(offsetof(StatusInfo, extraShutdown), 16U);
  EXPECT_EQ(offsetof(StatusInfo, extraBlocking), 17U);
  EXPECT_EQ(offsetof(StatusInfo, configShutdown), 18U);
}

TEST(Layout, PhysicalInfo) {
  using PhysicalInfo = IntfEntry::PhysicalInfo;
  static_assert(sizeof(PhysicalInfo) == 16);
  static_assert(alignof(PhysicalInfo) == 8);
  static_assert(std::is_aggregate_v<PhysicalInfo> && std::is_trivially_copyable_v<PhysicalInfo>);
  static_assert(std::is_same_v<decltype(PhysicalInfo::intf_mtu), std::uint64_t>);
  EXPECT_EQ(offsetof(PhysicalInfo, intf_mtu), 0U);
  EXPECT_EQ(offsetof(PhysicalInfo, eth_speed), 8U);
  EXPECT_EQ(offsetof(PhysicalInfo, eth_duplex_mode), 12U);
}

TEST(Layout, InterfaceFlags) {
  using InterfaceFlags = IntfEntry::InterfaceFlags;
  static_assert(sizeof(InterfaceFlags) == 6);
  static_assert(std::is_aggregate_v<InterfaceFlags>);
  static_assert(std::is_trivially_copyable_v<InterfaceFlags>);
  EXPECT_EQ(offsetof(InterfaceFlags, if_l2_switching), 0U);
  EXPECT_EQ(offsetof(InterfaceFlags, if_in_bundle), 1U);
  EXPECT_EQ(offsetof(InterfaceFlags, l2_bundle), 2U);
  EXPECT_EQ(offsetof(InterfaceFlags, l2_sub_if), 3U);
  EXPECT_EQ(offsetof(InterfaceFlags, point_to_point), 4U);
  EXPECT_EQ(offsetof(InterfaceFlags, if_multicast), 5U);
}

TEST(Layout, TypeInfo) {
  using TypeInfo = IntfEntry::TypeInfo;
  static_assert(sizeof(TypeInfo) == 16);
  static_assert(std::is_aggregate_v<TypeInfo> && std::is_trivially_copyable_v<TypeInfo>);
  EXPECT_EQ(offsetof(TypeInfo, interfaceType), 0U);
  EXPECT_EQ(offsetof(TypeInfo, interfaceFlags), 4U);
  EXPECT_EQ(offsetof(TypeInfo, vlanType), 12U);
}

TEST(Layout, BlockInfo) {
  using BlockInfo = IntfEntry::BlockInfo;
  static_assert(sizeof(BlockInfo) == 8);
  static_assert(std::is_aggregate_v<BlockInfo> && std::is_trivially_copyable_v<BlockInfo>);
  EXPECT_EQ(offsetof(BlockInfo, protocol), 0U);
  EXPECT_EQ(offsetof(BlockInfo, state), 4U);
}

TEST(Layout, IntfEntryBuilder_IsItsEntryAndNothingElse) {
  static_assert(sizeof(IntfEntryBuilder) == sizeof(IntfEntry));
  static_assert(!std::is_polymorphic_v<IntfEntryBuilder>);
  static_assert(std::is_convertible_v<IntfEntry&&, IntfEntryBuilder>);
  static_assert(!std::is_constructible_v<IntfEntryBuilder, const IntfEntry&>,
                "a starting entry is moved, never copied");
}

TEST(Layout, StateSignals) {
  static_assert(sizeof(ShutStateInfoSyncSignal) == 56);
  static_assert(std::is_aggregate_v<ShutStateInfoSyncSignal>);
  const ShutStateInfoSyncSignal shut;
  EXPECT_EQ(Distance(shut, &shut.shutStates), 0);
  EXPECT_EQ(Distance(shut, &shut.protocol), 48);
  static_assert(sizeof(BlockStateInfoSyncSignal) == 56);
  static_assert(std::is_aggregate_v<BlockStateInfoSyncSignal>);
  const BlockStateInfoSyncSignal block;
  EXPECT_EQ(Distance(block, &block.blockStates), 0);
  EXPECT_EQ(Distance(block, &block.protocol), 48);
}

TEST(Layout, InfoClientConfig) {
  static_assert(sizeof(ZORL2InfoClientConfig) == 96);
  static_assert(std::is_aggregate_v<ZORL2InfoClientConfig>);
  static_assert(std::is_same_v<decltype(ZORL2InfoClientConfig::clientAddress), std::uint64_t>);
  const ZORL2InfoClientConfig config;
  EXPECT_EQ(Distance(config, &config.protocolType), 0);
  EXPECT_EQ(Distance(config, &config.interfaceCategories), 8);
  EXPECT_EQ(Distance(config, &config.clientAddress), 56);
  EXPECT_EQ(Distance(config, &config.token), 64);
}

TEST(Layout, LagMemberOperation) {
  static_assert(sizeof(LagMemberOperation) == 24);
  static_assert(std::is_trivially_copyable_v<LagMemberOperation>);
  static_assert(std::is_same_v<decltype(LagMemberOperation::token), std::uint64_t>);
  static_assert(std::is_same_v<decltype(LagMemberOperation::managerData), std::uint32_t>);
  EXPECT_EQ(offsetof(LagMemberOperation, lag), 0U);
  EXPECT_EQ(offsetof(LagMemberOperation, member), 4U);
  EXPECT_EQ(offsetof(LagMemberOperation, token), 8U);
  EXPECT_EQ(offsetof(LagMemberOperation, managerData), 16U);
  EXPECT_EQ(offsetof(LagMemberOperation, collecting), 20U);
  EXPECT_EQ(offsetof(LagMemberOperation, distributing), 21U);
}

}  // namespace
