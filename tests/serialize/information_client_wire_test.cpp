#include <gmock/gmock.h>

#include <string>

#include "information_client.pb.h"
#include "tests/support/log_capture.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"
#include "tests/support/unknown_fields.h"
#include "tests/support/wire.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using zorl2_test::EqualsMessage;
using zorl2_test::FromHex;
using zorl2_test::FromText;
using zorl2_test::FromWire;
using zorl2_test::LogCapture;
using zorl2_test::UnknownVarints;
using zorl2_test::WireOf;

namespace {

pb::InformationClient FullClient() {
  return FromText<pb::InformationClient>(R"pb(
    clientAddress: 300
    protocolType: L2_PROTO
    intfCategory { L1: true L2: false VP: true L2_SUB_IF: false VIRTUAL_IF: true }
    token: "ab"
  )pb");
}

constexpr char kFullClientWire[] = "08 AC 02 10 0B 1A 0A 08 01 10 00 18 01 20 00 28 01 22 02 61 62";

TEST(InformationClientWire, EveryFieldStandsUnderItsNumber) {
  EXPECT_EQ(WireOf(FullClient()), kFullClientWire);
  EXPECT_THAT(FromWire<pb::InformationClient>(kFullClientWire), EqualsMessage(FullClient()));
}

TEST(InformationClientWire, TheAddressHas64Bits) {
  pb::InformationClient message = FullClient();
  message.set_clientaddress(0xFEDCBA9876543210);
  EXPECT_EQ(FromWire<pb::InformationClient>(WireOf(message)).clientaddress(), 0xFEDCBA9876543210);
}

TEST(InformationClientWire, EachRequiredFieldIsNeeded) {
  const auto paths = zorl2_test::RequiredFields(FullClient());
  EXPECT_EQ(paths.size(), 9U);
  LogCapture log;
  for (const auto& path : paths) {
    pb::InformationClient message = FullClient();
    zorl2_test::RemoveField(path, message);
    EXPECT_FALSE(message.IsInitialized()) << path.Name();
    pb::InformationClient parsed;
    EXPECT_FALSE(parsed.ParseFromString(FromHex(WireOf(message)))) << path.Name();
    // The runtime says which one.
    EXPECT_THAT(LogCapture::TakeErrors(), ElementsAre(HasSubstr(path.Name())));
  }
}

TEST(InformationClientWire, FiveFlagsThatArePresentAndFalseAreEnough) {
  pb::IntfCategory message;
  EXPECT_FALSE(message.IsInitialized());
  message.set_l1(false);
  message.set_l2(false);
  message.set_vp(false);
  message.set_l2_sub_if(false);
  EXPECT_FALSE(message.IsInitialized());
  message.set_virtual_if(false);
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_EQ(WireOf(message), "08 00 10 00 18 00 20 00 28 00");
}

TEST(InformationClientWire, AnUnlistedProtocolStaysAbsentAndIsKeptAsUnknown) {
  // 13; 128; 2^31; -1 as the ten octets of a negative number.
  const std::pair<const char*, std::uint64_t> cases[] = {
      {"0D", 13},
      {"80 01", 128},
      {"80 80 80 80 08", 0x80000000},
      {"FF FF FF FF FF FF FF FF FF 01", 0xFFFFFFFFFFFFFFFF}};
  LogCapture log;
  for (const auto& [number, value] : cases) {
    const std::string wire =
        std::string("08 05 10 ") + number + " 1A 0A 08 01 10 00 18 01 20 00 28 01 22 02 61 62";
    pb::InformationClient checked;
    EXPECT_FALSE(checked.ParseFromString(FromHex(wire))) << number;
    EXPECT_THAT(LogCapture::TakeErrors(), ElementsAre(HasSubstr("protocolType")));
    const auto partial = FromWire<pb::InformationClient>(wire);
    EXPECT_FALSE(partial.has_protocoltype()) << number;
    EXPECT_TRUE(partial.has_token());
    EXPECT_THAT(UnknownVarints(partial), ElementsAre(Pair(2, value)));
    // Written out again, behind the known fields.
    EXPECT_EQ(WireOf(partial),
              std::string("08 05 1A 0A 08 01 10 00 18 01 20 00 28 01 22 02 61 62 10 ") + number);
  }
}

TEST(InformationClientWire, EveryListedProtocolIsStored) {
  for (int number = 0; number <= 12; ++number) {
    pb::InformationClient message;
    message.set_protocoltype(static_cast<pb::ProtocolType>(number));
    const std::string wire = zorl2_test::ToHex({'\x10', static_cast<char>(number)});
    EXPECT_EQ(WireOf(message), wire);
    EXPECT_THAT(FromWire<pb::InformationClient>(wire), EqualsMessage(message));
  }
}

TEST(InformationClientWire, ATokenThatIsNotUtf8IsKeptAndLoggedOnBothSides) {
  LogCapture log;
  pb::InformationClient message = FullClient();
  message.set_token("\xC3\x28");
  const std::string bytes = message.SerializeAsString();
  EXPECT_EQ(zorl2_test::ToHex(bytes),
            "08 AC 02 10 0B 1A 0A 08 01 10 00 18 01 20 00 28 01 22 02 C3 28");
  EXPECT_THAT(LogCapture::TakeErrors(),
              ElementsAre(HasSubstr("zorl2.protobuf.InformationClient.token")));
  pb::InformationClient parsed;
  EXPECT_TRUE(parsed.ParseFromString(bytes));
  EXPECT_EQ(parsed.token(), "\xC3\x28");
  EXPECT_THAT(LogCapture::TakeErrors(),
              ElementsAre(HasSubstr("zorl2.protobuf.InformationClient.token")));
}

TEST(InformationClientWire, ATokenThatIsUtf8IsNotLogged) {
  LogCapture log;
  pb::InformationClient message = FullClient();
  message.set_token("caf\xC3\xA9");
  EXPECT_TRUE(message.ParseFromString(message.SerializeAsString()));
  EXPECT_THAT(LogCapture::TakeErrors(), IsEmpty());
}

}  // namespace
