#include "native/intf_entry.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <map>
#include <type_traits>
#include <utility>

#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/native_matchers.h"

using testing::ElementsAre;
using zorl2_test::EqualsNative;

namespace {

static_assert(std::is_same_v<decltype(&IntfEntry::getInterfaceCategory),
                             InterfaceCategory (IntfEntry::*)() const>,
              "the category is returned by value");

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

// Callers that were built with another copy of the header use those of the library.
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

TEST(IntfEntry, ACopySharesNothingWithTheOriginal) {
  const IntfEntry entry = zorl2_test::FullEntry();
  const IntfEntry copy = entry;
  EXPECT_THAT(copy, EqualsNative(entry));
  EXPECT_NE(copy.getGeneralInfo().redundancy_group_phy_addr.data(),
            entry.getGeneralInfo().redundancy_group_phy_addr.data());
  EXPECT_NE(&copy.getShutdownProtos().front(), &entry.getShutdownProtos().front());
  EXPECT_NE(&copy.getBlockInfo().front(), &entry.getBlockInfo().front());
}

TEST(IntfEntry, AMoveTransfersStringsAndListNodesAndCopiesTheNumbers) {
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

// Ten terabits in kbit/s do not fit 32 bits: the last rate is reduced modulo 2^32.
TEST(SpeedKbpsTable, HasTheRateOfEachSpeedAndNoOtherEntry) {
  static_assert(std::is_same_v<decltype(speedKbpsTable),
                               const std::map<IntfEntry::EthernetSpeed, unsigned int>>);
  const std::pair<int, unsigned int> rates[] = {{0, 0},         {1, 100},         {2, 1000},
                                                {3, 10000},     {4, 100000},      {5, 1000000},
                                                {6, 10000000},  {7, 25000000},    {8, 40000000},
                                                {9, 100000000}, {10, 1000000000}, {11, 1410065408}};
  EXPECT_EQ(speedKbpsTable.size(), 12U);
  for (const auto& [speed, rate] : rates) {
    EXPECT_EQ(speedKbpsTable.at(static_cast<IntfEntry::EthernetSpeed>(speed)), rate) << speed;
  }
}

}  // namespace
