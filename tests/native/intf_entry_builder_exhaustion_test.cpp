// The builder when memory runs out, and what it allocates otherwise.
#include <gmock/gmock.h>

#include <utility>

#include "native/intf_entry_builder.h"
#include "tests/support/allocations.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/native_entry.h"

using testing::ElementsAre;
using testing::SizeIs;
using zorl2_test::AllocationsOf;
using zorl2_test::EqualsNative;
using zorl2_test::FailAllocations;
using zorl2_test::FailEachAllocation;
using zorl2_test::OtherEntry;

namespace {

TEST(BuilderExhaustion, StartingFromAnEntryAllocatesNothing) {
  IntfEntry start = OtherEntry();
  EXPECT_EQ(AllocationsOf([&] { IntfEntryBuilder builder(std::move(start)); }), 0);
}

// Three strings too long to be stored inside, three protocols, two block entries.
TEST(BuilderExhaustion, BuildAllocatesEachStringAndListNodeOnce) {
  IntfEntryBuilder builder(OtherEntry());
  EXPECT_EQ(AllocationsOf([&] { builder.Build(); }), 8);
}

TEST(BuilderExhaustion, AFailedBuildReleasesWhatItCopiedAndLeavesTheBuilder) {
  IntfEntryBuilder builder(OtherEntry());
  long alive = zorl2_test::allocations - zorl2_test::deallocations;
  const long failures =
      FailEachAllocation([&] { builder.Build(); },
                         [&] {
                           EXPECT_EQ(zorl2_test::allocations - zorl2_test::deallocations, alive);
                           EXPECT_THAT(builder.Build(), EqualsNative(OtherEntry()));
                           alive = zorl2_test::allocations - zorl2_test::deallocations;
                         });
  EXPECT_EQ(failures, 8);
}

TEST(BuilderExhaustion, AFailedAppendAddsNothing) {
  IntfEntryBuilder builder;
  builder.addShutdownProto(STP).addBlockInfo({STP, BLOCK_STATE_BLOCK});
  const IntfEntry::BlockInfo block = {LACP, BLOCK_STATE_BLOCK};
  EXPECT_EQ(FailEachAllocation(
                [&] { builder.addShutdownProto(LACP); },
                [&] { EXPECT_THAT(builder.Build().getShutdownProtos(), ElementsAre(STP)); }),
            1);
  EXPECT_EQ(FailEachAllocation([&] { builder.addBlockInfo(block); },
                               [&] { EXPECT_THAT(builder.Build().getBlockInfo(), SizeIs(1)); }),
            1);
  EXPECT_THAT(builder.Build().getShutdownProtos(), ElementsAre(STP, LACP));
  EXPECT_THAT(builder.Build().getBlockInfo(), SizeIs(2));
}

// Each of the three strings of OtherEntry needs one allocation when it replaces a short one.
IntfEntry::GeneralInfo AfterFailureOfString(long failing) {
  IntfEntryBuilder builder(zorl2_test::FullEntry());
  const IntfEntry::GeneralInfo replacement = OtherEntry().getGeneralInfo();
  bool threw = false;
  {
    const FailAllocations guard(failing);
    try {
      builder.addGeneralInfo(replacement);
    } catch (const std::bad_alloc&) {
      threw = true;
    }
  }
  EXPECT_TRUE(threw);
  return builder.Build().getGeneralInfo();
}

TEST(BuilderExhaustion, AddGeneralInfo_KeepsTheStringsAssignedBeforeTheFailure) {
  const IntfEntry::GeneralInfo old_info = zorl2_test::FullGeneralInfo();
  const IntfEntry::GeneralInfo new_info = OtherEntry().getGeneralInfo();
  EXPECT_THAT(AfterFailureOfString(0), EqualsNative(old_info));
  const IntfEntry::GeneralInfo after_second = AfterFailureOfString(1);
  EXPECT_EQ(after_second.intf_name, new_info.intf_name);
  EXPECT_EQ(after_second.phy_addr, old_info.phy_addr);
  EXPECT_EQ(after_second.redundancy_group_phy_addr, old_info.redundancy_group_phy_addr);
  const IntfEntry::GeneralInfo after_third = AfterFailureOfString(2);
  EXPECT_EQ(after_third.intf_name, new_info.intf_name);
  EXPECT_EQ(after_third.phy_addr, new_info.phy_addr);
  EXPECT_EQ(after_third.redundancy_group_phy_addr, old_info.redundancy_group_phy_addr);
}

}  // namespace
