#include "native/intf_entry_builder.h"

#include <gmock/gmock.h>

#include <string>
#include <type_traits>
#include <utility>

#include "tests/support/entry_fixtures.h"
#include "tests/support/native_matchers.h"

using testing::ElementsAre;
using zorl2_test::EqualsNative;
using zorl2_test::FullEntry;
using zorl2_test::NativeDifference;
using zorl2_test::OtherEntry;

namespace {

static_assert(
    std::is_same_v<decltype(&IntfEntryBuilder::addGeneralInfo),
                   IntfEntryBuilder& (IntfEntryBuilder::*)(const IntfEntry::GeneralInfo&)>,
    "one overload only: callers store pointers to it");

TEST(IntfEntryBuilder, Untouched_BuildsTheEntryItStartedFrom) {
  EXPECT_THAT(IntfEntryBuilder(FullEntry()).Build(), EqualsNative(FullEntry()));
  EXPECT_THAT(IntfEntryBuilder().Build(), EqualsNative(IntfEntry{}));
  IntfEntryBuilder with_equals_sign = FullEntry();
  EXPECT_THAT(with_equals_sign.Build(), EqualsNative(FullEntry()));
}

// How the entry of the builder changes with one operation.
template <typename Operation>
std::string ChangeOf(const Operation& operation) {
  IntfEntryBuilder builder;
  EXPECT_EQ(&operation(builder), &builder) << "the calls do not chain";
  return NativeDifference(IntfEntry{}, builder.Build());
}

TEST(IntfEntryBuilder, EachOperationWritesItsOwnMemberOnly) {
  using Builder = IntfEntryBuilder;
  const zorid_t id{{1, 2, 3, 4}};
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addZorId(id); }),
            "- id: 0.0.0.0\n+ id: 1.2.3.4\n");
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addParent(id); }),
            "- parent: 0.0.0.0\n+ parent: 1.2.3.4\n");
  IntfEntry::GeneralInfo general;
  general.redundancy_group_id = 7;
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addGeneralInfo(general); }),
            "- generalInfo.redundancy_group_id: 0\n+ generalInfo.redundancy_group_id: 7\n");
  IntfEntry::StatusInfo status;
  status.operationalSpeed = 7;
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addStatusInfo(status); }),
            "- statusInfo.operationalSpeed: 0\n+ statusInfo.operationalSpeed: 7\n");
  IntfEntry::PhysicalInfo physical;
  physical.intf_mtu = 7;
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addPhysicalInfo(physical); }),
            "- physicalInfo.intf_mtu: 0\n+ physicalInfo.intf_mtu: 7\n");
  IntfEntry::TypeInfo type;
  type.vlanType = IntfEntry::ANY;
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addTypeInfo(type); }),
            "- typeInfo.vlanType: 0\n+ typeInfo.vlanType: 4\n");
  EXPECT_EQ(ChangeOf([](Builder& b) -> Builder& { return b.addShutdownProto(STP); }),
            "+ shutdownProtos[0]: 3\n");
  const IntfEntry::BlockInfo block{STP, BLOCK_STATE_BLOCK};
  EXPECT_EQ(ChangeOf([&](Builder& b) -> Builder& { return b.addBlockInfo(block); }),
            "+ blockInfo[0].protocol: 3\n+ blockInfo[0].state: 1\n");
  EXPECT_EQ(ChangeOf([](Builder& b) -> Builder& { return b.setInterfaceCategory(VP); }),
            "- interfaceCategory: 0\n+ interfaceCategory: 2\n");
}

TEST(IntfEntryBuilder, SingleValuedOperationsReplace) {
  IntfEntryBuilder builder(OtherEntry());
  const IntfEntry full = FullEntry();
  builder.addZorId(full.getId()).addParent(full.getParent());
  // Shorter strings than before.
  builder.addGeneralInfo(full.getGeneralInfo()).addStatusInfo(full.getStatusInfo());
  builder.addPhysicalInfo(full.getPhysicalInfo()).addTypeInfo(full.getTypeInfo());
  const IntfEntry entry = builder.setInterfaceCategory(full.getInterfaceCategory()).Build();
  EXPECT_EQ(entry.getId(), full.getId());
  EXPECT_EQ(entry.getParent(), full.getParent());
  EXPECT_THAT(entry.getGeneralInfo(), EqualsNative(full.getGeneralInfo()));
  EXPECT_THAT(entry.getStatusInfo(), EqualsNative(full.getStatusInfo()));
  EXPECT_THAT(entry.getPhysicalInfo(), EqualsNative(full.getPhysicalInfo()));
  EXPECT_THAT(entry.getTypeInfo(), EqualsNative(full.getTypeInfo()));
  EXPECT_EQ(entry.getInterfaceCategory(), full.getInterfaceCategory());
}

TEST(IntfEntryBuilder, ListOperationsAppendInOrderWithDuplicates) {
  const IntfEntry::BlockInfo first = {STP, BLOCK_STATE_BLOCK};
  const IntfEntry::BlockInfo second = {STP, BLOCK_STATE_FORWARD};
  IntfEntryBuilder builder;
  builder.addShutdownProto(STP).addShutdownProto(STP).addShutdownProto(LACP);
  builder.addBlockInfo(first).addBlockInfo(second);
  EXPECT_THAT(builder.Build().getShutdownProtos(), ElementsAre(STP, STP, LACP));
  EXPECT_THAT(builder.Build().getBlockInfo(),
              ElementsAre(EqualsNative(first), EqualsNative(second)));
}

TEST(IntfEntryBuilder, AcceptsAnyNumberAsAnEnumeration) {
  IntfEntryBuilder builder;
  builder.addShutdownProto(static_cast<ProtocolType>(-1))
      .addBlockInfo({static_cast<ProtocolType>(INT32_MAX), static_cast<BlockState>(INT32_MIN)})
      .setInterfaceCategory(static_cast<InterfaceCategory>(7));
  const IntfEntry entry = builder.Build();
  EXPECT_THAT(entry.getShutdownProtos(), ElementsAre(-1));
  EXPECT_EQ(entry.getBlockInfo().front().protocol, INT32_MAX);
  EXPECT_EQ(entry.getBlockInfo().front().state, INT32_MIN);
  EXPECT_EQ(entry.getInterfaceCategory(), 7);
}

TEST(IntfEntryBuilder, FromAnEntry_AppendsToItsListsAndEmptiesIt) {
  IntfEntry start = FullEntry();
  IntfEntryBuilder builder(std::move(start));
  builder.addBlockInfo({EFM, BLOCK_STATE_BLOCK});
  EXPECT_EQ(NativeDifference(FullEntry(), builder.Build()),
            "+ blockInfo[2].protocol: 8\n+ blockInfo[2].state: 1\n");
  // Strings and lists are empty, numbers remain.
  IntfEntryBuilder left;
  left.addZorId(FullEntry().getId()).addParent(FullEntry().getParent());
  left.addGeneralInfo({"", "", 90210, "", 4107}).addStatusInfo(FullEntry().getStatusInfo());
  left.addPhysicalInfo(FullEntry().getPhysicalInfo()).addTypeInfo(FullEntry().getTypeInfo());
  EXPECT_THAT(start, EqualsNative(left.setInterfaceCategory(L2_SUB_IF).Build()));
}

TEST(IntfEntryBuilder, Build_EveryResultIsIndependent) {
  IntfEntry first;
  IntfEntry second;
  {
    IntfEntryBuilder builder(FullEntry());
    first = builder.Build();
    second = builder.addBlockInfo({EFM, BLOCK_STATE_BLOCK}).Build();
    builder.addGeneralInfo(OtherEntry().getGeneralInfo()).addZorId({{9, 9, 9, 9}});
    builder.addShutdownProto(STP).setInterfaceCategory(L1);
  }
  EXPECT_THAT(first, EqualsNative(FullEntry()));
  EXPECT_EQ(NativeDifference(first, second),
            "+ blockInfo[2].protocol: 8\n+ blockInfo[2].state: 1\n");
  EXPECT_NE(first.getGeneralInfo().phy_addr.data(), second.getGeneralInfo().phy_addr.data());
  EXPECT_NE(&first.getShutdownProtos().front(), &second.getShutdownProtos().front());
  EXPECT_NE(&first.getBlockInfo().front(), &second.getBlockInfo().front());
}

}  // namespace
