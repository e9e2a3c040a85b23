#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "interface_entry.pb.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/log_capture.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"
#include "tests/support/unknown_fields.h"
#include "tests/support/wire.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using zorl2_test::EqualsMessage;
using zorl2_test::FromHex;
using zorl2_test::FromText;
using zorl2_test::FromWire;
using zorl2_test::FullEntryMessage;
using zorl2_test::LogCapture;
using zorl2_test::ToHex;
using zorl2_test::UnknownVarints;
using zorl2_test::WireOf;

namespace {

// A client that is complete, for the messages that need one.
const char* const kClientText =
    "infoClient { clientAddress: 1 protocolType: LLDP token: '' "
    "intfCategory { L1: false L2: false VP: false L2_SUB_IF: false VIRTUAL_IF: false } }";

TEST(InterfaceEntryWire, TheFullEntryIsTheKnownBytes) {
  std::ifstream file(std::string(ZORL2_SOURCE_DIR) + "/tests/testdata/entry_full.hex");
  const std::string known = FromHex({std::istreambuf_iterator<char>(file), {}});
  ASSERT_EQ(known.size(), 142U);
  EXPECT_EQ(WireOf(FullEntryMessage()), ToHex(known));
  pb::IntfEntry parsed;
  EXPECT_TRUE(parsed.ParseFromString(known));
  EXPECT_THAT(parsed, EqualsMessage(FullEntryMessage()));
}

TEST(InterfaceEntryWire, AListAndAnIndicationCarryTheEntry) {
  const std::string entry = FullEntryMessage().SerializeAsString();
  auto list = FromText<pb::IntfEntryList>(kClientText);
  *list.add_intfentry() = FullEntryMessage();
  // 142 octets: a length of 8E 01 behind the tag of field 2.
  EXPECT_EQ(WireOf(list),
            "0A 12 08 01 10 01 1A 0A 08 00 10 00 18 00 20 00 28 00 22 00 12 8E 01 " + ToHex(entry));
  auto indication = FromText<pb::IntfIndication>("indCategory: VIRTUAL_IF indType: DEL");
  *indication.mutable_intfentry() = FullEntryMessage();
  EXPECT_EQ(WireOf(indication), "08 04 10 02 1A 8E 01 " + ToHex(entry));
}

TEST(InterfaceEntryWire, ParentAndBothListsMayBeMissing) {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_parent();
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_TRUE(message.ParseFromString(message.SerializeAsString()));
}

TEST(InterfaceEntryWire, EveryRequiredFieldIsNeededWhereverItStands) {
  const auto paths = zorl2_test::RequiredFields(FullEntryMessage());
  ASSERT_EQ(paths.size(), 33U);
  LogCapture log;
  for (const auto& path : paths) {
    pb::IntfEntry message = FullEntryMessage();
    zorl2_test::RemoveField(path, message);
    EXPECT_FALSE(message.IsInitialized()) << path.Name();
    // Neither is a list or an indication that holds it.
    auto list = FromText<pb::IntfEntryList>(kClientText);
    *list.add_intfentry() = message;
    EXPECT_FALSE(list.IsInitialized()) << path.Name();
    pb::IntfIndication indication;
    indication.set_indcategory(pb::L1);
    indication.set_indtype(pb::ADD);
    *indication.mutable_intfentry() = message;
    EXPECT_FALSE(indication.IsInitialized()) << path.Name();
    pb::IntfEntry parsed;
    EXPECT_FALSE(parsed.ParseFromString(FromHex(WireOf(message)))) << path.Name();
    EXPECT_THAT(LogCapture::TakeErrors(), ElementsAre(HasSubstr(path.Name())));
  }
}

TEST(InterfaceEntryWire, AListNeedsItsClientButNoEntry) {
  EXPECT_TRUE(FromText<pb::IntfEntryList>(kClientText).IsInitialized());
  EXPECT_FALSE(pb::IntfEntryList().IsInitialized());
}

TEST(InterfaceEntryWire, AnIndicationNeedsItsThreeFields) {
  pb::IntfIndication full;
  full.set_indcategory(pb::L1);
  full.set_indtype(pb::ADD);
  *full.mutable_intfentry() = FullEntryMessage();
  EXPECT_TRUE(full.IsInitialized());
  pb::IntfIndication without = full;
  without.clear_indcategory();
  EXPECT_FALSE(without.IsInitialized());
  without = full;
  without.clear_indtype();
  EXPECT_FALSE(without.IsInitialized());
  without = full;
  without.clear_intfentry();
  EXPECT_FALSE(without.IsInitialized());
}

TEST(InterfaceEntryWire, AnUnlistedCategoryStaysAbsentAndIsKeptAsUnknown) {
  pb::IntfEntry without = FullEntryMessage();
  without.clear_intfcategory();
  const std::string wire = WireOf(without) + " 48 05";
  const auto message = FromWire<pb::IntfEntry>(wire);
  EXPECT_FALSE(message.has_intfcategory());
  EXPECT_FALSE(message.IsInitialized());
  EXPECT_THAT(UnknownVarints(message), ElementsAre(Pair(9, 5)));
  EXPECT_EQ(WireOf(message), wire);
}

// Each enumerated field of a nested message, with the first number that its enumeration lacks.
TEST(InterfaceEntryWire, EveryNestedEnumerationIsClosed) {
  const auto expect = [](auto message, const std::string& wire, int field, std::uint64_t number) {
    EXPECT_TRUE(message.ParsePartialFromString(FromHex(wire)));
    const auto* descriptor = message.GetDescriptor()->FindFieldByNumber(field);
    EXPECT_FALSE(message.GetReflection()->HasField(message, descriptor)) << descriptor->full_name();
    EXPECT_THAT(UnknownVarints(message), ElementsAre(Pair(field, number)));
    EXPECT_EQ(WireOf(message), wire);
  };
  expect(pb::StatusInfo(), "08 02", 1, 2);
  expect(pb::StatusInfo(), "10 02", 2, 2);
  expect(pb::StatusInfo(), "18 02", 3, 2);
  expect(pb::PhysicalInfo(), "10 0C", 2, 12);
  expect(pb::PhysicalInfo(), "18 03", 3, 3);
  expect(pb::TypeInfo(), "08 05", 1, 5);
  expect(pb::TypeInfo(), "18 05", 3, 5);
  expect(pb::BlockInfo(), "08 0D", 1, 13);
  expect(pb::BlockInfo(), "10 02", 2, 2);
  expect(pb::IntfIndication(), "08 05", 1, 5);
  expect(pb::IntfIndication(), "10 03", 2, 3);
}

TEST(InterfaceEntryWire, AnUnlistedShutdownProtocolIsSkippedAndKeptPackedOrNot) {
  for (const char* run : {"38 03 38 0D 38 04", "3A 03 03 0D 04"}) {
    const auto message = FromWire<pb::IntfEntry>(run);
    EXPECT_THAT(message.shutdownprotos(), ElementsAre(pb::LACP, pb::STP)) << run;
    EXPECT_THAT(UnknownVarints(message), ElementsAre(Pair(7, 13))) << run;
    EXPECT_EQ(WireOf(message), "38 03 38 04 38 0D") << run;
  }
}

TEST(InterfaceEntryWire, ShutdownProtocolsAreWrittenUnpackedAndReadEitherWay) {
  const auto message = FromText<pb::IntfEntry>("shutdownProtos: [STP, STP, L1_PROTO]");
  EXPECT_EQ(WireOf(message), "38 04 38 04 38 0A");
  EXPECT_THAT(FromWire<pb::IntfEntry>("3A 03 04 04 0A"), EqualsMessage(message));
}

TEST(InterfaceEntryWire, TheBridgePortNumberMayBeMissing) {
  auto message = FromText<pb::GeneralInfo>(zorl2_test::kFullGeneralInfoText);
  EXPECT_TRUE(message.has_bridge_port_number());
  message.clear_bridge_port_number();
  EXPECT_TRUE(message.IsInitialized());
  pb::GeneralInfo parsed;
  EXPECT_TRUE(parsed.ParseFromString(message.SerializeAsString()));
  EXPECT_FALSE(parsed.has_bridge_port_number());
  EXPECT_EQ(parsed.bridge_port_number(), 0U);
}

TEST(InterfaceEntryWire, StringsThatAreNotUtf8AreKeptAndLoggedUnderTheirFieldOnBothSides) {
  pb::GeneralInfo message;
  message.set_intf_name("\x80");
  message.set_phy_addr("\xC0\xAF");
  message.set_redundancy_group_id(1);
  message.set_redundancy_group_phy_addr("\xED\xA0\x80");
  const auto all_three =
      ElementsAre(HasSubstr("'zorl2.protobuf.GeneralInfo.intf_name'"),
                  HasSubstr("'zorl2.protobuf.GeneralInfo.phy_addr'"),
                  HasSubstr("'zorl2.protobuf.GeneralInfo.redundancy_group_phy_addr'"));
  LogCapture log;
  const std::string bytes = message.SerializeAsString();
  EXPECT_THAT(LogCapture::TakeErrors(), all_three);
  pb::GeneralInfo parsed;
  EXPECT_TRUE(parsed.ParseFromString(bytes));
  EXPECT_THAT(LogCapture::TakeErrors(), all_three);
  EXPECT_THAT(parsed, EqualsMessage(message));
}

TEST(InterfaceEntryWire, EveryTruncationOfTheEntryIsRefused) {
  const std::string whole = FullEntryMessage().SerializeAsString();
  LogCapture log;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    pb::IntfEntry message;
    EXPECT_FALSE(message.ParseFromString(whole.substr(0, length))) << length;
  }
}

}  // namespace
