// The values of a default-constructed record. Each is made in memory full of a pattern, which shows
// a member without a default.
#include <gmock/gmock.h>

#include <cstddef>
#include <new>
#include <string>

#include "native/intf_entry_builder.h"
#include "tests/support/native_text.h"

namespace {

using testing::EndsWith;
using testing::MatchesRegex;
using testing::StartsWith;
using zorl2_test::Text;

// Neither function may be inlined: a compiler that sees both removes the pattern.
[[gnu::noinline]] void FillWithPattern(void* memory, std::size_t size) {
  auto* bytes = static_cast<volatile unsigned char*>(memory);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = 0xA5;
}

template <typename Record>
[[gnu::noinline]] Record* Make(void* memory) {
  return new (memory) Record;
}

template <typename Record>
std::string TextOfFresh() {
  alignas(Record) unsigned char memory[sizeof(Record)];
  FillWithPattern(memory, sizeof(memory));
  Record* record = Make<Record>(memory);
  std::string text;
  if constexpr (std::is_same_v<Record, IntfEntryBuilder>) {
    text = Text(record->Build());
  } else {
    text = Text(*record);
  }
  record->~Record();
  return text;
}

constexpr char kGeneral[] =
    "intf_name: \"\"\nphy_addr: \"\"\nredundancy_group_id: 0\nredundancy_group_phy_addr: \"\"\n"
    "bridge_port_number: 0\n";
constexpr char kStatus[] =
    "adminStatus: 0\noperationalStatus: 0\nlinkStatus: 0\noperationalSpeed: 0\nextraShutdown: 0\n"
    "extraBlocking: 0\nconfigShutdown: 0\n";
constexpr char kPhysical[] = "intf_mtu: 0\neth_speed: 0\neth_duplex_mode: 0\n";
constexpr char kFlags[] =
    "if_l2_switching: 0\nif_in_bundle: 0\nl2_bundle: 0\nl2_sub_if: 0\npoint_to_point: 0\n"
    "if_multicast: 0\n";

TEST(DefaultValues, AnIdentifierIsAllZero) { EXPECT_EQ(TextOfFresh<zorid_t>(), "0.0.0.0"); }

TEST(DefaultValues, ANestedRecordIsEmptyAndZero) {
  EXPECT_EQ(TextOfFresh<IntfEntry::GeneralInfo>(), kGeneral);
  EXPECT_EQ(TextOfFresh<IntfEntry::StatusInfo>(), kStatus);
  EXPECT_EQ(TextOfFresh<IntfEntry::PhysicalInfo>(), kPhysical);
  EXPECT_EQ(TextOfFresh<IntfEntry::InterfaceFlags>(), kFlags);
  EXPECT_THAT(TextOfFresh<IntfEntry::TypeInfo>(), StartsWith("interfaceType: 0\n"));
  EXPECT_THAT(TextOfFresh<IntfEntry::TypeInfo>(), EndsWith("vlanType: 0\n"));
  EXPECT_EQ(TextOfFresh<IntfEntry::BlockInfo>(), "protocol: 0\nstate: 0\n");
}

TEST(DefaultValues, AnEntryAndTheEntryOfABuilderAreEmptyAndZero) {
  EXPECT_THAT(TextOfFresh<IntfEntry>(), StartsWith("id: 0.0.0.0\nparent: 0.0.0.0\n"));
  EXPECT_THAT(TextOfFresh<IntfEntry>(), MatchesRegex("([A-Za-z0-9_.]+: (0|0.0.0.0|\"\")\n)*"));
  EXPECT_THAT(TextOfFresh<IntfEntry>(), EndsWith("\ninterfaceCategory: 0\n"));
  EXPECT_EQ(TextOfFresh<IntfEntryBuilder>(), TextOfFresh<IntfEntry>());
}

TEST(DefaultValues, ASignalNamesNoInterfaceAndTheFirstProtocol) {
  EXPECT_EQ(TextOfFresh<ShutStateInfoSyncSignal>(), "protocol: 0\n");
  EXPECT_EQ(TextOfFresh<BlockStateInfoSyncSignal>(), "protocol: 0\n");
}

TEST(DefaultValues, ARegistrationIsEmptyAndZero) {
  EXPECT_EQ(TextOfFresh<ZORL2InfoClientConfig>(),
            "protocolType: 0\nclientAddress: 0\ntoken: \"\"\n");
}

TEST(DefaultValues, AnAggregationOperationIsZero) {
  EXPECT_EQ(TextOfFresh<LagMemberOperation>(),
            "lag: 0.0.0.0\nmember: 0.0.0.0\ntoken: 0\nmanagerData: 0\ncollecting: 0\n"
            "distributing: 0\n");
}

}  // namespace
