#include "native/intf_entry_builder.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "tests/support/entry_fixtures.h"
#include "tests/support/native_entry.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using zorl2_test::EqualsNative;
using zorl2_test::FullEntry;
using zorl2_test::OtherEntry;

namespace {

template <typename Element>
std::vector<const Element*> Addresses(const std::list<Element>& list) {
  std::vector<const Element*> addresses;
  for (const Element& element : list) addresses.push_back(&element);
  return addresses;
}

TEST(IntfEntryBuilder, Untouched_BuildsTheEntryItStartedFrom) {
  IntfEntryBuilder from_entry(FullEntry());
  EXPECT_THAT(from_entry.Build(), EqualsNative(FullEntry()));
  IntfEntryBuilder from_nothing;
  EXPECT_THAT(from_nothing.Build(), EqualsNative(IntfEntry{}));
}

// Each operation alone: its own member, and no other, differs from the empty entry.
TEST(IntfEntryBuilder, EachOperationWritesItsOwnMemberOnly) {
  const auto changed = [](const auto& operation) {
    IntfEntryBuilder builder;
    IntfEntryBuilder& returned = operation(builder);
    EXPECT_EQ(&returned, &builder);
    return zorl2_test::NativeDifference(IntfEntry{}, builder.Build());
  };
  EXPECT_EQ(changed([](auto& b) -> auto& {
              return b.addZorId({{1, 2, 3, 4}});
            }),
            "- id: 0.0.0.0\n+ id: 1.2.3.4\n");
  EXPECT_EQ(changed([](auto& b) -> auto& {
              return b.addParent({{1, 2, 3, 4}});
            }),
            "- parent: 0.0.0.0\n+ parent: 1.2.3.4\n");
  EXPECT_EQ(changed([](auto& b) -> auto& {
              IntfEntry::GeneralInfo info;
              info.redundancy_group_id = 7;
              return b.addGeneralInfo(std::move(info));
            }),
            "- generalInfo.redundancy_group_id: 0\n+ generalInfo.redundancy_group_id: 7\n");
  EXPECT_EQ(changed([](auto& b) -> auto& {
              IntfEntry::StatusInfo info;
              info.operationalSpeed = 7;
              return b.addStatusInfo(info);
            }),
            "- statusInfo.operationalSpeed: 0\n+ statusInfo.operationalSpeed: 7\n");
  EXPECT_EQ(changed([](auto& b) -> auto& {
              IntfEntry::PhysicalInfo info;
              info.intf_mtu = 7;
              return b.addPhysicalInfo(info);
            }),
            "- physicalInfo.intf_mtu: 0\n+ physicalInfo.intf_mtu: 7\n");
  EXPECT_EQ(changed([](auto& b) -> auto& {
              IntfEntry::TypeInfo info;
              info.vlanType = IntfEntry::ANY;
              return b.addTypeInfo(info);
            }),
            "- typeInfo.vlanType: 0\n+ typeInfo.vlanType: 4\n");
  EXPECT_EQ(changed([](auto& b) -> auto& { return b.addShutdownProto(STP); }),
            "+ shutdownProtos[0]: 3\n");
  EXPECT_EQ(changed([](auto& b) -> auto& {
              return b.addBlockInfo({STP, BLOCK_STATE_BLOCK});
            }),
            "+ blockInfo[0].protocol: 3\n+ blockInfo[0].state: 1\n");
  EXPECT_EQ(changed([](auto& b) -> auto& { return b.setInterfaceCategory(VP); }),
            "- interfaceCategory: 0\n+ interfaceCategory: 2\n");
}

TEST(IntfEntryBuilder, OneChainFromAnEmptyEntryToTheResult) {
  const IntfEntry entry = IntfEntryBuilder(IntfEntry{})
                              .addZorId(zorid_t{{1, 2, 3, 4}})
                              .addParent(zorid_t{{5, 6, 7, 8}})
                              .setInterfaceCategory(L2)
                              .Build();
  EXPECT_EQ(zorl2_test::NativeDifference(IntfEntry{}, entry),
            "- id: 0.0.0.0\n- parent: 0.0.0.0\n- interfaceCategory: 0\n"
            "+ id: 1.2.3.4\n+ parent: 5.6.7.8\n+ interfaceCategory: 1\n");
}

TEST(IntfEntryBuilder, SingleValuedOperationsReplace) {
  IntfEntryBuilder builder(OtherEntry());
  builder.addZorId({{1, 1, 1, 1}}).addZorId({{11, 22, 33, 44}});
  builder.addParent({{1, 1, 1, 1}}).addParent({{55, 66, 77, 188}});
  builder.addStatusInfo({}).addStatusInfo(zorl2_test::FullStatusInfo());
  builder.addPhysicalInfo({}).addPhysicalInfo(zorl2_test::FullPhysicalInfo());
  builder.addTypeInfo({}).addTypeInfo(zorl2_test::FullTypeInfo());
  builder.setInterfaceCategory(L1).setInterfaceCategory(L2_SUB_IF);
  const IntfEntry entry = builder.Build();
  EXPECT_EQ(entry.getId(), FullEntry().getId());
  EXPECT_EQ(entry.getParent(), FullEntry().getParent());
  EXPECT_THAT(entry.getStatusInfo(), EqualsNative(zorl2_test::FullStatusInfo()));
  EXPECT_THAT(entry.getPhysicalInfo(), EqualsNative(zorl2_test::FullPhysicalInfo()));
  EXPECT_THAT(entry.getTypeInfo(), EqualsNative(zorl2_test::FullTypeInfo()));
  EXPECT_EQ(entry.getInterfaceCategory(), L2_SUB_IF);
}

TEST(IntfEntryBuilder, AddGeneralInfo_ReplacesAllFiveMembersWithShorterStringsToo) {
  IntfEntryBuilder builder;
  builder.addGeneralInfo(OtherEntry().getGeneralInfo());
  const IntfEntry::GeneralInfo shorter = {"e1", "", 3, "a", 0};
  builder.addGeneralInfo(shorter);
  EXPECT_THAT(builder.Build().getGeneralInfo(), EqualsNative(shorter));
  // The argument was copied.
  EXPECT_THAT(shorter, EqualsNative(IntfEntry::GeneralInfo{"e1", "", 3, "a", 0}));
}

TEST(IntfEntryBuilder, ShutdownProtocolsAccumulateWithDuplicates) {
  IntfEntryBuilder builder;
  builder.addShutdownProto(STP).addShutdownProto(STP).addShutdownProto(LACP);
  EXPECT_THAT(builder.Build().getShutdownProtos(), ElementsAre(STP, STP, LACP));
}

TEST(IntfEntryBuilder, BlockEntriesAccumulateAlsoForOneProtocol) {
  const IntfEntry::BlockInfo first = {STP, BLOCK_STATE_BLOCK};
  const IntfEntry::BlockInfo second = {STP, BLOCK_STATE_FORWARD};
  IntfEntryBuilder builder;
  builder.addBlockInfo(first).addBlockInfo(second);
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

TEST(IntfEntryBuilder, FromAnEntry_AppendsBehindItsElementsAndEmptiesIt) {
  IntfEntry start = FullEntry();
  IntfEntryBuilder builder(std::move(start));
  builder.addBlockInfo({EFM, BLOCK_STATE_BLOCK});
  const IntfEntry entry = builder.Build();
  EXPECT_THAT(entry.getBlockInfo(),
              ElementsAre(EqualsNative(IntfEntry::BlockInfo{CFM, BLOCK_STATE_BLOCK}),
                          EqualsNative(IntfEntry::BlockInfo{L2_PROTO, BLOCK_STATE_FORWARD}),
                          EqualsNative(IntfEntry::BlockInfo{EFM, BLOCK_STATE_BLOCK})));
  EXPECT_THAT(start.getBlockInfo(), IsEmpty());
  EXPECT_THAT(start.getShutdownProtos(), IsEmpty());
  // Strings empty, numbers kept.
  EXPECT_THAT(start.getGeneralInfo(),
              EqualsNative(IntfEntry::GeneralInfo{"", "", 90210, "", 4107}));
  EXPECT_EQ(start.getId(), FullEntry().getId());
  EXPECT_EQ(start.getParent(), FullEntry().getParent());
  EXPECT_THAT(start.getStatusInfo(), EqualsNative(FullEntry().getStatusInfo()));
  EXPECT_THAT(start.getPhysicalInfo(), EqualsNative(FullEntry().getPhysicalInfo()));
  EXPECT_THAT(start.getTypeInfo(), EqualsNative(FullEntry().getTypeInfo()));
  EXPECT_EQ(start.getInterfaceCategory(), L2_SUB_IF);
}

TEST(IntfEntryBuilder, FromAnEntry_AlsoWithAnEqualsSign) {
  IntfEntryBuilder builder = FullEntry();
  EXPECT_THAT(builder.Build(), EqualsNative(FullEntry()));
}

TEST(IntfEntryBuilder, Build_EveryResultIsIndependent) {
  IntfEntryBuilder builder(FullEntry());
  const IntfEntry first = builder.Build();
  builder.addBlockInfo({EFM, BLOCK_STATE_BLOCK});
  const IntfEntry second = builder.Build();
  EXPECT_THAT(first.getBlockInfo(), SizeIs(2));
  EXPECT_THAT(second.getBlockInfo(), SizeIs(3));
  builder.addGeneralInfo(OtherEntry().getGeneralInfo())
      .addZorId({{9, 9, 9, 9}})
      .addShutdownProto(STP)
      .setInterfaceCategory(L1);
  EXPECT_THAT(first, EqualsNative(FullEntry()));
  EXPECT_EQ(zorl2_test::NativeDifference(first, second),
            "+ blockInfo[2].protocol: 8\n+ blockInfo[2].state: 1\n");
}

TEST(IntfEntryBuilder, Build_CopiesIntoStringsAndListNodesOfItsOwn) {
  IntfEntryBuilder builder(OtherEntry());
  const IntfEntry built = builder.Build();
  const IntfEntry kept = builder.Build();
  EXPECT_THAT(built, EqualsNative(kept));
  EXPECT_NE(built.getGeneralInfo().intf_name.data(), kept.getGeneralInfo().intf_name.data());
  EXPECT_NE(Addresses(built.getShutdownProtos()), Addresses(kept.getShutdownProtos()));
  EXPECT_NE(Addresses(built.getBlockInfo()), Addresses(kept.getBlockInfo()));
}

TEST(IntfEntryBuilder, Build_OutlivesTheBuilder) {
  IntfEntry entry;
  {
    IntfEntryBuilder builder(OtherEntry());
    entry = builder.Build();
  }
  EXPECT_THAT(entry, EqualsNative(OtherEntry()));
}

}  // namespace
