// What a record holds that nobody has written to. Each is made in memory full of a pattern, so that
// a member without a value of its own shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <new>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_entry_builder.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"

namespace {

using testing::Each;
using testing::IsEmpty;

// Neither function may be merged into its caller: a compiler that sees both drops the pattern.
[[gnu::noinline]] void FillWithPattern(void* memory, std::size_t size) {
  auto* octets = static_cast<volatile unsigned char*>(memory);
  for (std::size_t i = 0; i < size; ++i) octets[i] = 0xA5;
}

template <typename Record>
[[gnu::noinline]] Record* Make(void* memory) {
  return new (memory) Record;
}

template <typename Record>
class Fresh {
 public:
  Fresh() {
    FillWithPattern(memory_, sizeof(memory_));
    record_ = Make<Record>(memory_);
  }
  ~Fresh() { record_->~Record(); }
  Fresh(const Fresh&) = delete;
  Fresh& operator=(const Fresh&) = delete;
  Record* operator->() { return record_; }
  Record& operator*() { return *record_; }

 private:
  alignas(Record) unsigned char memory_[sizeof(Record)];
  Record* record_;
};

void ExpectZero(const IntfEntry::GeneralInfo& info) {
  EXPECT_THAT(info.intf_name, IsEmpty());
  EXPECT_THAT(info.phy_addr, IsEmpty());
  EXPECT_EQ(info.redundancy_group_id, 0U);
  EXPECT_THAT(info.redundancy_group_phy_addr, IsEmpty());
  EXPECT_EQ(info.bridge_port_number, 0U);
}

void ExpectZero(const IntfEntry::StatusInfo& info) {
  EXPECT_EQ(info.adminStatus, 0);
  EXPECT_EQ(info.operationalStatus, 0);
  EXPECT_EQ(info.linkStatus, 0);
  EXPECT_EQ(info.operationalSpeed, 0U);
  EXPECT_FALSE(info.extraShutdown);
  EXPECT_FALSE(info.extraBlocking);
  EXPECT_FALSE(info.configShutdown);
}

void ExpectZero(const IntfEntry::PhysicalInfo& info) {
  EXPECT_EQ(info.intf_mtu, 0U);
  EXPECT_EQ(info.eth_speed, 0);
  EXPECT_EQ(info.eth_duplex_mode, 0);
}

void ExpectZero(const IntfEntry::InterfaceFlags& flags) {
  EXPECT_FALSE(flags.if_l2_switching);
  EXPECT_FALSE(flags.if_in_bundle);
  EXPECT_FALSE(flags.l2_bundle);
  EXPECT_FALSE(flags.l2_sub_if);
  EXPECT_FALSE(flags.point_to_point);
  EXPECT_FALSE(flags.if_multicast);
}

void ExpectZero(const IntfEntry::TypeInfo& info) {
  EXPECT_EQ(info.interfaceType, 0);
  ExpectZero(info.interfaceFlags);
  EXPECT_EQ(info.vlanType, 0);
}

void ExpectZero(const IntfEntry& entry) {
  EXPECT_THAT(entry.getId().octets, Each(0));
  EXPECT_THAT(entry.getParent().octets, Each(0));
  ExpectZero(entry.getGeneralInfo());
  ExpectZero(entry.getStatusInfo());
  ExpectZero(entry.getPhysicalInfo());
  ExpectZero(entry.getTypeInfo());
  EXPECT_EQ(entry.getInterfaceCategory(), 0);
  EXPECT_THAT(entry.getShutdownProtos(), IsEmpty());
  EXPECT_THAT(entry.getBlockInfo(), IsEmpty());
}

TEST(DefaultValues, AnIdentifierIsAllZero) { EXPECT_THAT(Fresh<zorid_t>()->octets, Each(0)); }

TEST(DefaultValues, TheRecordsOfAnEntryAreZeroThroughout) {
  ExpectZero(*Fresh<IntfEntry::GeneralInfo>());
  ExpectZero(*Fresh<IntfEntry::StatusInfo>());
  ExpectZero(*Fresh<IntfEntry::PhysicalInfo>());
  ExpectZero(*Fresh<IntfEntry::InterfaceFlags>());
  ExpectZero(*Fresh<IntfEntry::TypeInfo>());
  Fresh<IntfEntry::BlockInfo> block;
  EXPECT_EQ(block->protocol, LLDP);
  EXPECT_EQ(block->state, BLOCK_STATE_FORWARD);
}

TEST(DefaultValues, AnEntryIsZeroThroughout) { ExpectZero(*Fresh<IntfEntry>()); }

TEST(DefaultValues, ABuilderStartsFromAnEntryThatIsZeroThroughout) {
  ExpectZero(Fresh<IntfEntryBuilder>()->Build());
}

TEST(DefaultValues, ASignalNamesNoInterfaceAndTheFirstProtocol) {
  Fresh<ShutStateInfoSyncSignal> shut;
  EXPECT_THAT(shut->shutStates, IsEmpty());
  EXPECT_EQ(shut->protocol, LLDP);
  Fresh<BlockStateInfoSyncSignal> block;
  EXPECT_THAT(block->blockStates, IsEmpty());
  EXPECT_EQ(block->protocol, LLDP);
}

TEST(DefaultValues, ARegistrationIsEmptyAndZero) {
  Fresh<ZORL2InfoClientConfig> config;
  EXPECT_EQ(config->protocolType, LLDP);
  EXPECT_THAT(config->interfaceCategories, IsEmpty());
  EXPECT_EQ(config->clientAddress, 0U);
  EXPECT_THAT(config->token, IsEmpty());
}

TEST(DefaultValues, AnAggregationOperationIsZeroThroughout) {
  Fresh<LagMemberOperation> operation;
  EXPECT_THAT(operation->lag.octets, Each(0));
  EXPECT_THAT(operation->member.octets, Each(0));
  EXPECT_EQ(operation->token, 0U);
  EXPECT_EQ(operation->managerData, 0U);
  EXPECT_FALSE(operation->collecting);
  EXPECT_FALSE(operation->distributing);
}

}  // namespace
