// Memory runs out in the builder, the helpers and the C functions.
#include <gtest/gtest.h>

#include "c_api/intf_entry.h"
#include "native/intf_entry_builder.h"
#include "tests/reliability/exhaust.h"
#include "tests/reliability/native_text.h"
#include "tests/reliability/part_converters.h"
#include "tests/reliability/wire.h"

namespace pb = zorl2::protobuf;

namespace {

std::string Long(const char* text) { return std::string(text) + std::string(40, '.'); }

const IntfEntry::GeneralInfo kNew{Long("name"), Long("address"), 1, Long("group"), 2};
const IntfEntry::GeneralInfo kOld{"a", "b", 3, "c", 4};

IntfEntryBuilder Builder() {
  IntfEntryBuilder builder;
  builder.addGeneralInfo(kOld).addShutdownProto(STP).addBlockInfo({ERPS, BLOCK_STATE_BLOCK});
  return builder;
}

TEST(NativeExhaustion, GeneralInfoKeepsTheStringsAssignedBeforeTheFailure) {
  EXPECT_EQ(proof::Exhaust(
                Builder, [](IntfEntryBuilder& b) { b.addGeneralInfo(kNew); },
                [](IntfEntryBuilder& b, bool failed) {
                  const IntfEntry::GeneralInfo g = b.Build().getGeneralInfo();
                  EXPECT_TRUE(g.intf_name == kOld.intf_name || g.intf_name == kNew.intf_name);
                  // Assigned in their order: a later one is new only after the earlier.
                  EXPECT_TRUE(g.phy_addr == kOld.phy_addr || g.intf_name == kNew.intf_name);
                  EXPECT_EQ(g.redundancy_group_phy_addr, failed ? kOld.redundancy_group_phy_addr
                                                                : kNew.redundancy_group_phy_addr);
                  EXPECT_EQ(g.bridge_port_number, failed ? 4 : 2);
                  if (!failed) {
                    EXPECT_EQ(proof::Text(g), proof::Text(kNew));
                  }
                }),
            3);
}

TEST(NativeExhaustion, AppendAddsNothing) {
  std::size_t expected = 1;
  EXPECT_EQ(proof::Exhaust(
                Builder, [](IntfEntryBuilder& b) { b.addShutdownProto(LACP); },
                [&](IntfEntryBuilder& b, bool failed) {
                  const std::list<ProtocolType> protocols = b.Build().getShutdownProtos();
                  EXPECT_EQ(protocols.size(), failed ? expected : expected + 1);
                }),
            1);
  EXPECT_EQ(proof::Exhaust(
                Builder,
                [](IntfEntryBuilder& b) {
                  b.addBlockInfo({LBD, BLOCK_STATE_BLOCK});
                },
                [&](IntfEntryBuilder& b, bool failed) {
                  EXPECT_EQ(b.Build().getBlockInfo().size(), failed ? 1U : 2U);
                }),
            1);
}

TEST(NativeExhaustion, BuildLeavesTheBuilderUntouched) {
  const std::string before = proof::Text(Builder().addGeneralInfo(kNew).Build());
  EXPECT_EQ(
      proof::Exhaust([] { return Builder().addGeneralInfo(kNew); },
                     [](IntfEntryBuilder& b) { b.Build(); },
                     [&](IntfEntryBuilder& b, bool) { EXPECT_EQ(proof::Text(b.Build()), before); }),
      3 + 2);
}

TEST(NativeExhaustion, TakingOverAllocatesNothing) {
  IntfEntry start = Builder().addGeneralInfo(kNew).Build();
  proof::FailAllocation(1);
  IntfEntryBuilder builder(std::move(start));
  builder.addZorId({}).addParent({}).addStatusInfo({});
  builder.addPhysicalInfo({}).addTypeInfo({}).setInterfaceCategory(VP);
  EXPECT_FALSE(proof::StopFailing());
  EXPECT_EQ(builder.Build().getGeneralInfo().intf_name, kNew.intf_name);
}

TEST(NativeExhaustion, GeneralInfoHelperKeepsWhatWasWritten) {
  oracle::General model;
  oracle::ToMessage(kNew, model);
  pb::GeneralInfo message;
  proof::Fill(model, message);
  EXPECT_EQ(proof::Exhaust(
                [] { return kOld; },
                [&](IntfEntry::GeneralInfo& g) {
                  EXPECT_TRUE(proof::GeneralConverter().Convert(message, g));
                },
                [](const IntfEntry::GeneralInfo& g, bool failed) {
                  EXPECT_TRUE(g.intf_name == kOld.intf_name || g.intf_name == kNew.intf_name);
                  EXPECT_EQ(g.redundancy_group_phy_addr == kNew.redundancy_group_phy_addr, !failed);
                }),
            3);
  EXPECT_GE(proof::Exhaust([] { return pb::GeneralInfo(); },
                           [](pb::GeneralInfo& m) { proof::GeneralConverter().Convert(kNew, m); },
                           [&](const pb::GeneralInfo& m, bool failed) {
                             EXPECT_TRUE(proof::IsPartOf(m, message));
                             EXPECT_TRUE(failed || m.IsInitialized());
                           }),
            3);
}

TEST(NativeExhaustion, TypeInfoHelperLeavesNothingBehind) {
  const IntfEntry::TypeInfo type{
      IntfEntry::ETHERNET, {true, true, false, false, true, false}, IntfEntry::ANY};
  EXPECT_GE(proof::Exhaust(
                [] { return pb::TypeInfo(); },
                [&](pb::TypeInfo& m) { proof::TypeConverter().Convert(type, m); },
                [](const pb::TypeInfo& m, bool failed) { EXPECT_EQ(m.IsInitialized(), !failed); }),
            1);
}

// The signal that ends a child which runs the call with its n-th allocation failing; 0 when the
// call returns.
template <typename Call>
int SignalOf(Call call, long n) {
  const pid_t child = fork();
  if (child == 0) {
    proof::FailAllocation(n);
    call();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

TEST(NativeExhaustion, RecordEndsTheProcessWithAnInvalidAccess) {
  // The record and its three buffers.
  for (long n = 1; n <= 4; ++n) {
    EXPECT_EQ(SignalOf([] { init_intf_entry(); }, n), SIGSEGV) << n;
  }
  EXPECT_EQ(SignalOf([] { init_intf_entry(); }, 5), 0);
}

TEST(NativeExhaustion, ListIsNullWithoutHeaderOrArrayAndFaultsWithoutABuffer) {
  for (long n = 1; n <= 2; ++n) {
    const long before = proof::LiveAllocations();
    proof::FailAllocation(n);
    EXPECT_EQ(init_intf_entry_list(3), nullptr) << n;
    EXPECT_TRUE(proof::StopFailing());
    EXPECT_EQ(proof::LiveAllocations(), before) << n;
  }
  for (long n = 3; n <= 2 + 9; ++n) {
    EXPECT_EQ(SignalOf([] { init_intf_entry_list(3); }, n), SIGSEGV) << n;
  }
  EXPECT_EQ(SignalOf([] { init_intf_entry_list(3); }, 12), 0);
}

TEST(NativeExhaustion, BuffersHaveTheirSizes) {
  proof::FailAllocation(0);
  intf_entry_t* entry = init_intf_entry();
  const std::size_t sizes[] = {sizeof(intf_entry_t), 64, 32, 32};
  for (long n = 1; n <= 4; ++n) EXPECT_EQ(proof::AllocationSize(n), sizes[n - 1]) << n;
  destroy_intf_entry(&entry);

  proof::FailAllocation(0);
  intf_entry_list_t* list = init_intf_entry_list(1);
  EXPECT_EQ(proof::AllocationSize(2), sizeof(intf_entry_t));
  for (long n = 3; n <= 5; ++n) EXPECT_EQ(proof::AllocationSize(n), sizes[n - 2]) << n;
  destroy_intf_entry_list(&list);
}

TEST(NativeExhaustion, DestroyFunctionsFreeEverything) {
  const long before = proof::LiveAllocations();
  intf_entry_t* entry = init_intf_entry();
  destroy_intf_entry(&entry);
  EXPECT_EQ(proof::LiveAllocations(), before);
  for (const std::size_t count : {0U, 1U, 7U}) {
    intf_entry_list_t* list = init_intf_entry_list(count);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(proof::LiveAllocations(), before + 2 + 3 * static_cast<long>(count));
    destroy_intf_entry_list(&list);
    EXPECT_EQ(proof::LiveAllocations(), before);
  }
}

TEST(NativeExhaustion, ABufferSetToNullIsSkippedAndTheOthersAreFreed) {
  for (char* intf_entry_t::*buffer : {&intf_entry_t::intf_name, &intf_entry_t::phy_addr,
                                      &intf_entry_t::redundancy_group_phy_addr}) {
    const long before = proof::LiveAllocations();
    intf_entry_t* entry = init_intf_entry();
    delete[](entry->*buffer);
    entry->*buffer = nullptr;
    destroy_intf_entry(&entry);
    EXPECT_EQ(proof::LiveAllocations(), before);
  }
}

TEST(NativeExhaustion, TooLongAListIsNullAndLeavesNothing) {
  const long before = proof::LiveAllocations();
  EXPECT_EQ(init_intf_entry_list(~std::size_t{0}), nullptr);
  EXPECT_EQ(init_intf_entry_list(~std::size_t{0} / sizeof(intf_entry_t)), nullptr);
  EXPECT_EQ(proof::LiveAllocations(), before);
}

}  // namespace
