#include "native/intf_entry.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstring>
#include <map>
#include <new>
#include <utility>

#include "native/intf_entry_builder.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/native_entry.h"

using testing::ElementsAre;
using testing::IsEmpty;
using zorl2_test::EqualsNative;

namespace {

// Built over memory that is not zero, so that the initialisers are seen to do it.
template <typename Record>
class OverDirtyMemory {
 public:
  OverDirtyMemory() {
    std::memset(memory_, 0xA5, sizeof(memory_));
    record_ = new (memory_) Record;
  }
  ~OverDirtyMemory() { record_->~Record(); }
  OverDirtyMemory(const OverDirtyMemory&) = delete;
  OverDirtyMemory& operator=(const OverDirtyMemory&) = delete;
  const Record& operator*() const { return *record_; }

 private:
  alignas(Record) unsigned char memory_[sizeof(Record)];
  Record* record_;
};

TEST(IntfEntry, DefaultConstructedIsEmptyAndZero) {
  const OverDirtyMemory<IntfEntry> entry;
  EXPECT_THAT(
      zorl2_test::MembersOf(*entry),
      ElementsAre(
          "id: 0.0.0.0", "parent: 0.0.0.0", "generalInfo.intf_name: \"\"",
          "generalInfo.phy_addr: \"\"", "generalInfo.redundancy_group_id: 0",
          "generalInfo.redundancy_group_phy_addr: \"\"", "generalInfo.bridge_port_number: 0",
          "statusInfo.adminStatus: 0", "statusInfo.operationalStatus: 0",
          "statusInfo.linkStatus: 0", "statusInfo.operationalSpeed: 0",
          "statusInfo.extraShutdown: 0", "statusInfo.extraBlocking: 0",
          "statusInfo.configShutdown: 0", "physicalInfo.intf_mtu: 0", "physicalInfo.eth_speed: 0",
          "physicalInfo.eth_duplex_mode: 0", "typeInfo.interfaceType: 0",
          "typeInfo.interfaceFlags.if_l2_switching: 0", "typeInfo.interfaceFlags.if_in_bundle: 0",
          "typeInfo.interfaceFlags.l2_bundle: 0", "typeInfo.interfaceFlags.l2_sub_if: 0",
          "typeInfo.interfaceFlags.point_to_point: 0", "typeInfo.interfaceFlags.if_multicast: 0",
          "typeInfo.vlanType: 0", "interfaceCategory: 0"));
  EXPECT_THAT((*entry).getShutdownProtos(), IsEmpty());
  EXPECT_THAT((*entry).getBlockInfo(), IsEmpty());
}

TEST(IntfEntry, ADefaultConstructedBlockInfoIsZero) {
  const OverDirtyMemory<IntfEntry::BlockInfo> info;
  EXPECT_THAT(*info, EqualsNative(IntfEntry::BlockInfo{LLDP, BLOCK_STATE_FORWARD}));
}

TEST(IntfEntry, TheGettersReturnWhatTheBuilderSet) {
  const IntfEntry entry = zorl2_test::FullEntry();
  EXPECT_EQ(entry.getId(), (zorid_t{{11, 22, 33, 44}}));
  EXPECT_EQ(entry.getParent(), (zorid_t{{55, 66, 77, 188}}));
  EXPECT_THAT(entry.getGeneralInfo(), EqualsNative(zorl2_test::FullGeneralInfo()));
  EXPECT_THAT(entry.getStatusInfo(), EqualsNative(zorl2_test::FullStatusInfo()));
  EXPECT_THAT(entry.getPhysicalInfo(), EqualsNative(zorl2_test::FullPhysicalInfo()));
  EXPECT_THAT(entry.getTypeInfo(), EqualsNative(zorl2_test::FullTypeInfo()));
  EXPECT_THAT(entry.getShutdownProtos(), ElementsAre(LACP, L1_PROTO, LACP));
  EXPECT_THAT(entry.getBlockInfo(),
              ElementsAre(EqualsNative(IntfEntry::BlockInfo{CFM, BLOCK_STATE_BLOCK}),
                          EqualsNative(IntfEntry::BlockInfo{L2_PROTO, BLOCK_STATE_FORWARD})));
  EXPECT_EQ(entry.getInterfaceCategory(), L2_SUB_IF);
}

TEST(IntfEntry, TheGettersReferToTheEntrysOwnMembers) {
  const IntfEntry entry = zorl2_test::FullEntry();
  const auto inside = [&entry](const void* member) {
    const auto* begin = reinterpret_cast<const char*>(&entry);
    return member >= begin && member < begin + sizeof(entry);
  };
  EXPECT_TRUE(inside(&entry.getId()));
  EXPECT_TRUE(inside(&entry.getParent()));
  EXPECT_TRUE(inside(&entry.getGeneralInfo()));
  EXPECT_TRUE(inside(&entry.getStatusInfo()));
  EXPECT_TRUE(inside(&entry.getPhysicalInfo()));
  EXPECT_TRUE(inside(&entry.getTypeInfo()));
  EXPECT_TRUE(inside(&entry.getShutdownProtos()));
  EXPECT_TRUE(inside(&entry.getBlockInfo()));
  EXPECT_EQ(&entry.getGeneralInfo(), &entry.getGeneralInfo());
}

// Callers that were built against another copy of the header find them in the library.
TEST(IntfEntry, TheGettersAreFunctionsOfTheLibrary) {
  for (const char* symbol :
       {"_ZNK9IntfEntry5getIdEv", "_ZNK9IntfEntry9getParentEv", "_ZNK9IntfEntry14getGeneralInfoEv",
        "_ZNK9IntfEntry13getStatusInfoEv", "_ZNK9IntfEntry15getPhysicalInfoEv",
        "_ZNK9IntfEntry11getTypeInfoEv", "_ZNK9IntfEntry17getShutdownProtosB5cxx11Ev",
        "_ZNK9IntfEntry12getBlockInfoB5cxx11Ev", "_ZNK9IntfEntry20getInterfaceCategoryEv"}) {
    void* function = dlsym(RTLD_DEFAULT, symbol);
    ASSERT_NE(function, nullptr) << symbol;
    Dl_info info;
    ASSERT_NE(dladdr(function, &info), 0);
    EXPECT_THAT(info.dli_fname, testing::HasSubstr("libzorl2_serialize.so")) << symbol;
  }
}

TEST(IntfEntry, KeepsDuplicatesOfAShutdownProtocolInTheirOrder) {
  IntfEntryBuilder builder;
  builder.addShutdownProto(STP).addShutdownProto(STP);
  EXPECT_THAT(builder.Build().getShutdownProtos(), ElementsAre(STP, STP));
}

TEST(IntfEntry, TheBridgePortNumberHas16BitsAndTheMtu64) {
  IntfEntry::GeneralInfo general;
  general.bridge_port_number = 65535;
  ++general.bridge_port_number;
  EXPECT_EQ(general.bridge_port_number, 0);
  IntfEntry::PhysicalInfo physical;
  physical.intf_mtu = 4294967295U;
  ++physical.intf_mtu;
  EXPECT_EQ(physical.intf_mtu, 4294967296U);
}

TEST(IntfEntry, ACopySharesNothingWithTheOriginal) {
  const IntfEntry entry = zorl2_test::FullEntry();
  const IntfEntry copy = entry;
  EXPECT_THAT(copy, EqualsNative(entry));
  EXPECT_NE(copy.getGeneralInfo().redundancy_group_phy_addr.data(),
            entry.getGeneralInfo().redundancy_group_phy_addr.data());
  EXPECT_NE(&copy.getShutdownProtos().front(), &entry.getShutdownProtos().front());
  EXPECT_NE(&copy.getBlockInfo().front(), &entry.getBlockInfo().front());
}

TEST(IntfEntry, AMoveTakesStringsAndListNodesOverAndLeavesTheNumbers) {
  IntfEntry from = zorl2_test::OtherEntry();
  const char* name = from.getGeneralInfo().intf_name.data();
  const ProtocolType* protocol = &from.getShutdownProtos().back();
  const IntfEntry::BlockInfo* block = &from.getBlockInfo().back();
  IntfEntry to = zorl2_test::FullEntry();
  to = std::move(from);
  EXPECT_THAT(to, EqualsNative(zorl2_test::OtherEntry()));
  EXPECT_EQ(to.getGeneralInfo().intf_name.data(), name);
  EXPECT_EQ(&to.getShutdownProtos().back(), protocol);
  EXPECT_EQ(&to.getBlockInfo().back(), block);
  EXPECT_EQ(from.getId(), to.getId());
  EXPECT_THAT(from.getPhysicalInfo(), EqualsNative(to.getPhysicalInfo()));
}

TEST(SpeedKbpsTable, GivesTheRateOfEachSpeedAndHasNoOtherEntry) {
  const std::pair<int, unsigned int> rates[] = {{0, 0},         {1, 100},         {2, 1000},
                                                {3, 10000},     {4, 100000},      {5, 1000000},
                                                {6, 10000000},  {7, 25000000},    {8, 40000000},
                                                {9, 100000000}, {10, 1000000000}, {11, 1410065408}};
  EXPECT_EQ(speedKbpsTable.size(), 12U);
  for (const auto& [speed, rate] : rates) {
    EXPECT_EQ(speedKbpsTable.at(static_cast<IntfEntry::EthernetSpeed>(speed)), rate) << speed;
  }
  for (const std::int32_t number : zorl2_test::NumbersOutside(12)) {
    EXPECT_EQ(speedKbpsTable.count(static_cast<IntfEntry::EthernetSpeed>(number)), 0U) << number;
  }
}

// Ten terabits in kbit/s do not fit 32 bits, and the wrapped number is kept.
TEST(SpeedKbpsTable, TheLastRateIsReducedModulo2To32) {
  EXPECT_EQ(speedKbpsTable.at(IntfEntry::SPEED_10_TBS), 10000000000ULL % (1ULL << 32));
}

TEST(SpeedKbpsTable, IsAConstantMapFromSpeedToUnsignedInt) {
  static_assert(std::is_same_v<decltype(speedKbpsTable),
                               const std::map<IntfEntry::EthernetSpeed, unsigned int>>);
  EXPECT_EQ(speedKbpsTable.begin()->first, IntfEntry::SPEED_UNKNOWN);
  EXPECT_EQ(speedKbpsTable.rbegin()->first, IntfEntry::SPEED_10_TBS);
}

}  // namespace
