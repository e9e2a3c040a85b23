// The messages of lag.proto, l2_sub_if.proto, virtual_if.proto, sysinfo.proto and audit_info.proto.
#include <gmock/gmock.h>

#include <string>

#include "audit_info.pb.h"
#include "l2_sub_if.pb.h"
#include "lag.pb.h"
#include "sysinfo.pb.h"
#include "tests/support/log_capture.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"
#include "tests/support/wire.h"
#include "virtual_if.pb.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::HasSubstr;
using zorl2_test::FromText;
using zorl2_test::LogCapture;
using zorl2_test::WireOf;

namespace {

template <typename Proto>
void ExpectEmptyBytesAreAValidMessageWithNoField() {
  Proto message;
  EXPECT_TRUE(message.ParseFromString(""));
  std::vector<const google::protobuf::FieldDescriptor*> present;
  message.GetReflection()->ListFields(message, &present);
  EXPECT_TRUE(present.empty()) << message.GetTypeName();
}

TEST(SmallMessagesWire, EmptyBytesAreAValidMessageWhereEveryFieldIsOptional) {
  ExpectEmptyBytesAreAValidMessageWithNoField<pb::LagMemberOperationProto>();
  ExpectEmptyBytesAreAValidMessageWithNoField<pb::L2SubinterfaceOperation>();
  ExpectEmptyBytesAreAValidMessageWithNoField<pb::AuditInfo>();
}

TEST(SmallMessagesWire, EveryFieldStandsUnderItsNumber) {
  EXPECT_EQ(WireOf(FromText<pb::LagMemberOperationProto>(
                "lag { value: 1 } member { value: 2 } token: 300 collecting: true "
                "distributing: false")),
            "0A 03 0A 01 01 12 03 0A 01 02 18 AC 02 20 01 28 00");
  EXPECT_EQ(WireOf(FromText<pb::L2SubinterfaceOperation>(
                "parent { value: 1 } subinterface { value: 2 }")),
            "0A 03 0A 01 01 12 03 0A 01 02");
  EXPECT_EQ(WireOf(FromText<pb::RedundancyGroupFields>("lag: 1 rg_id: 2 rg_mac: 'm'")),
            "08 01 10 02 1A 01 6D");
  EXPECT_EQ(WireOf(FromText<pb::SysInfoIndication>(
                "sysInfo { sys_mac: 'm' sys_name: 'n' sys_descr: 'd' }")),
            "0A 09 0A 01 6D 12 01 6E 1A 01 64");
  EXPECT_EQ(WireOf(FromText<pb::AuditInfo>("internal_caches: 'c' interfaces_states: 's'")),
            "0A 01 63 12 01 73");
}

TEST(SmallMessagesWire, ANegativeNumberTakesTenOctets) {
  pb::LagLoadBalance balance;
  balance.set_lag(127);
  balance.set_load_balance(-1);
  EXPECT_EQ(WireOf(balance), "08 7F 10 FF FF FF FF FF FF FF FF FF 01");
  EXPECT_EQ(balance.ByteSizeLong(), 13U);
  pb::LagLoadBalanceHashType hash;
  hash.set_hash_type(-2);
  EXPECT_EQ(WireOf(hash), "08 FE FF FF FF FF FF FF FF FF 01");
  pb::RedundancyGroupFields group;
  group.set_rg_id(INT32_MIN);
  EXPECT_EQ(WireOf(group), "10 80 80 80 80 F8 FF FF FF FF 01");
}

TEST(SmallMessagesWire, AVirtualInterfaceNeedsItsIdentifierButNoValuesInIt) {
  EXPECT_FALSE(pb::VirtualInterfaceOperation().IsInitialized());
  const auto message = FromText<pb::VirtualInterfaceOperation>("virtualInterface {}");
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_EQ(WireOf(message), "0A 00");
}

template <typename Proto>
void ExpectEachRequiredFieldIsNeeded(const std::string& text, std::size_t count) {
  const auto full = FromText<Proto>(text);
  EXPECT_TRUE(full.IsInitialized()) << text;
  const auto paths = zorl2_test::RequiredFields(full);
  EXPECT_EQ(paths.size(), count) << text;
  for (const auto& path : paths) {
    Proto message = full;
    zorl2_test::RemoveField(path, message);
    EXPECT_FALSE(message.IsInitialized()) << full.GetTypeName() << " without " << path.Name();
  }
}

TEST(SmallMessagesWire, EachRequiredFieldIsNeeded) {
  ExpectEachRequiredFieldIsNeeded<pb::LagLoadBalance>("lag: 1 load_balance: 2", 2);
  ExpectEachRequiredFieldIsNeeded<pb::LagLoadBalanceHashType>("hash_type: 1", 1);
  ExpectEachRequiredFieldIsNeeded<pb::RedundancyGroupFields>("lag: 1 rg_id: 2 rg_mac: 'm'", 3);
  ExpectEachRequiredFieldIsNeeded<pb::SysInfo>("sys_mac: 'm' sys_name: 'n' sys_descr: 'd'", 3);
  // The indication and the three fields inside, sys_descr among them.
  ExpectEachRequiredFieldIsNeeded<pb::SysInfoIndication>(
      "sysInfo { sys_mac: 'm' sys_name: 'n' sys_descr: 'd' }", 4);
}

TEST(SmallMessagesWire, TextThatIsNotUtf8IsKeptAndLoggedUnderItsFieldOnBothSides) {
  const auto expect = [](auto message, const std::vector<std::string>& fields) {
    LogCapture log;
    const std::string bytes = message.SerializeAsString();
    const std::vector<std::string> on_write = LogCapture::TakeErrors();
    auto parsed = message;
    parsed.Clear();
    EXPECT_TRUE(parsed.ParseFromString(bytes));
    const std::vector<std::string> on_read = LogCapture::TakeErrors();
    EXPECT_THAT(parsed, zorl2_test::EqualsMessage(message));
    ASSERT_EQ(on_write.size(), fields.size()) << message.GetTypeName();
    ASSERT_EQ(on_read.size(), fields.size()) << message.GetTypeName();
    for (std::size_t i = 0; i < fields.size(); ++i) {
      EXPECT_THAT(on_write[i], HasSubstr("'zorl2.protobuf." + fields[i] + "'"));
      EXPECT_THAT(on_read[i], HasSubstr("'zorl2.protobuf." + fields[i] + "'"));
    }
  };
  const std::string bad = "\xFF\xFE text";
  pb::RedundancyGroupFields group;
  group.set_lag(1);
  group.set_rg_id(2);
  group.set_rg_mac(bad);
  expect(group, {"RedundancyGroupFields.rg_mac"});
  pb::SysInfo info;
  info.set_sys_mac(bad);
  info.set_sys_name(bad);
  info.set_sys_descr(bad);
  expect(info, {"SysInfo.sys_mac", "SysInfo.sys_name", "SysInfo.sys_descr"});
  pb::AuditInfo audit;
  audit.set_internal_caches(bad);
  audit.set_interfaces_states(bad);
  expect(audit, {"AuditInfo.internal_caches", "AuditInfo.interfaces_states"});
}

}  // namespace
