// The functions of the two helper classes that convert one nested record each.
#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "tests/convert/conversions.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"
#include "tests/support/unknown_fields.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::ExpectInvalidKey;
using zorl2_test::FromText;
using zorl2_test::MessageDifference;
using zorl2_test::NativeDifference;
using zorl2_test::NumbersOutside;
using zorl2_test::OtherEntry;
using zorl2_test::UnknownVarints;
using zorl2_test::Unlisted;

namespace {

// A record of an entry with its two functions. Callers store pointers to these functions: the types
// of the parameters reject a function that is static, const, virtual or overloaded.
template <typename MessageType, typename RecordType,
          bool (IntfEntryConvertHelperProtobuf::*kToNative)(const MessageType&, RecordType&),
          void (IntfEntryConvertHelperZOR::*kToMessage)(const RecordType&, MessageType&)>
struct Part {
  using Message = MessageType;
  using Record = RecordType;
  bool Convert(const Message& message, Record& record) {
    return (IntfEntryConvertHelperProtobuf().*kToNative)(message, record);
  }
  static Record ToNative(const Message& message, Record record) {
    EXPECT_TRUE(Part().Convert(message, record));
    return record;
  }
  static Message ToMessage(const Record& record, Message message = {}) {
    (IntfEntryConvertHelperZOR().*kToMessage)(record, message);
    return message;
  }
  // Returns the destination after the exception for an unlisted value.
  static Record RejectedToNative(const Message& message, Record record) {
    EXPECT_TRUE(message.IsInitialized());
    ExpectInvalidKey([&] { Part().Convert(message, record); });
    return record;
  }
  static Message RejectedToMessage(const Record& record, Message message = {}) {
    ExpectInvalidKey([&] { (IntfEntryConvertHelperZOR().*kToMessage)(record, message); });
    return message;
  }
};

using In = IntfEntryConvertHelperProtobuf;
using Out = IntfEntryConvertHelperZOR;
static_assert(std::is_empty_v<In> && std::is_empty_v<Out>);

struct General : Part<pb::GeneralInfo, IntfEntry::GeneralInfo, &In::ConvertGeneralInfo,
                      &Out::ConvertGeneralInfo> {
  static Message FullMessage() { return FromText<Message>(zorl2_test::kFullGeneralInfoText); }
  static Record FullRecord() { return zorl2_test::FullGeneralInfo(); }
  static Record OtherRecord() { return OtherEntry().getGeneralInfo(); }
  static constexpr int kRequired = 4;
  static constexpr char kDefault[] =
      "intf_name: '' phy_addr: '' bridge_port_number: 0 redundancy_group_id: 0 "
      "redundancy_group_phy_addr: ''";
};
struct Status
    : Part<pb::StatusInfo, IntfEntry::StatusInfo, &In::ConvertStatusInfo, &Out::ConvertStatusInfo> {
  static Message FullMessage() { return FromText<Message>(zorl2_test::kFullStatusInfoText); }
  static Record FullRecord() { return zorl2_test::FullStatusInfo(); }
  static Record OtherRecord() { return OtherEntry().getStatusInfo(); }
  static constexpr int kRequired = 7;
  static constexpr char kDefault[] =
      "adminStatus: IF_ADMIN_UP operationalStatus: UP linkStatus: LINK_UP operationalSpeed: 0 "
      "extraShutdown: false extraBlocking: false configShutdown: false";
};
struct Physical : Part<pb::PhysicalInfo, IntfEntry::PhysicalInfo, &In::ConvertPhysicalInfo,
                       &Out::ConvertPhysicalInfo> {
  static Message FullMessage() { return FromText<Message>(zorl2_test::kFullPhysicalInfoText); }
  static Record FullRecord() { return zorl2_test::FullPhysicalInfo(); }
  static Record OtherRecord() { return OtherEntry().getPhysicalInfo(); }
  static constexpr int kRequired = 3;
  static constexpr char kDefault[] =
      "intf_mtu: 0 eth_speed: SPEED_UNKNOWN eth_duplex_mode: MODE_UNKNOWN";
};
struct Flags : Part<pb::InterfaceFlags, IntfEntry::InterfaceFlags, &In::ConvertInterfaceFlags,
                    &Out::ConvertInterfaceFlags> {
  static Message FullMessage() { return FromText<Message>(zorl2_test::kFullInterfaceFlagsText); }
  static Record FullRecord() { return {true, true, true, true, true, true}; }
  static Record OtherRecord() { return {}; }
  static constexpr int kRequired = 6;
  static constexpr char kDefault[] =
      "if_l2_switching: false if_in_bundle: false l2_bundle: false l2_sub_if: false "
      "point_to_point: false if_multicast: false";
};
struct Type : Part<pb::TypeInfo, IntfEntry::TypeInfo, &In::ConvertTypeInfo, &Out::ConvertTypeInfo> {
  static Message FullMessage() { return FromText<Message>(zorl2_test::kFullTypeInfoText); }
  static Record FullRecord() { return zorl2_test::FullTypeInfo(); }
  static Record OtherRecord() { return OtherEntry().getTypeInfo(); }
  static constexpr int kRequired = 9;
  static constexpr char kDefault[] =
      "interfaceType: TYPE_UNKNOWN vlanType: NONE interfaceFlags { if_l2_switching: false "
      "if_in_bundle: false l2_bundle: false l2_sub_if: false point_to_point: false "
      "if_multicast: false }";
};
struct Block
    : Part<pb::BlockInfo, IntfEntry::BlockInfo, &In::ConvertBlockInfo, &Out::ConvertBlockInfo> {
  static Message FullMessage() {
    return FromText<Message>("protocol: CFM state: BLOCK_STATE_BLOCK");
  }
  static Record FullRecord() { return {CFM, BLOCK_STATE_BLOCK}; }
  static Record OtherRecord() { return {ERPS, BLOCK_STATE_FORWARD}; }
  static constexpr int kRequired = 2;
  static constexpr char kDefault[] = "protocol: LLDP state: BLOCK_STATE_FORWARD";
};

template <typename T>
class EntryPart : public testing::Test {};
using Parts = testing::Types<General, Status, Physical, Flags, Type, Block>;
TYPED_TEST_SUITE(EntryPart, Parts);

TYPED_TEST(EntryPart, MessageToNative_WritesEveryMember) {
  EXPECT_THAT(TypeParam::ToNative(TypeParam::FullMessage(), TypeParam::OtherRecord()),
              EqualsNative(TypeParam::FullRecord()));
}

TYPED_TEST(EntryPart, MessageToNative_AMissingRequiredFieldLeavesTheRecordUnchanged) {
  const auto paths = zorl2_test::RequiredFields(TypeParam::FullMessage());
  EXPECT_EQ(paths.size(), static_cast<std::size_t>(TypeParam::kRequired));
  for (const auto& path : paths) {
    SCOPED_TRACE(path.Name());
    auto message = TypeParam::FullMessage();
    zorl2_test::RemoveField(path, message);
    zorl2_test::ExpectRejected<TypeParam>(message, TypeParam::OtherRecord());
  }
}

TYPED_TEST(EntryPart, NativeToMessage_SetsEveryField) {
  EXPECT_THAT(TypeParam::ToMessage(TypeParam::FullRecord()),
              EqualsMessage(TypeParam::FullMessage()));
}

TYPED_TEST(EntryPart, NativeToMessage_SetsEveryFieldOfADefaultRecord) {
  EXPECT_THAT(TypeParam::ToMessage({}, TypeParam::FullMessage()),
              EqualsText<typename TypeParam::Message>(TypeParam::kDefault));
}

TYPED_TEST(EntryPart, NativeToMessage_KeepsUnknownFields) {
  typename TypeParam::Message message;
  message.mutable_unknown_fields()->AddVarint(99, 7);
  EXPECT_THAT(UnknownVarints(TypeParam::ToMessage({}, message)), ElementsAre(Pair(99, 7)));
}

// Each boolean field alone, so that none is mistaken for another.
TYPED_TEST(EntryPart, RoundTrip_EachFlagAloneSetsItsMemberAndNoOther) {
  const auto zero = FromText<typename TypeParam::Message>(TypeParam::kDefault);
  for (int i = 0; i < zero.GetDescriptor()->field_count(); ++i) {
    const auto* field = zero.GetDescriptor()->field(i);
    if (field->cpp_type() != google::protobuf::FieldDescriptor::CPPTYPE_BOOL) continue;
    auto message = zero;
    message.GetReflection()->SetBool(&message, field, true);
    const auto record = TypeParam::ToNative(message, {});
    EXPECT_EQ(NativeDifference(typename TypeParam::Record{}, record),
              "- " + field->name() + ": 0\n+ " + field->name() + ": 1\n");
    EXPECT_THAT(TypeParam::ToMessage(record), EqualsMessage(message));
  }
}

TEST(GeneralPart, MessageToNative_TheBridgePortNumberKeepsItsLow16Bits) {
  const std::pair<std::uint32_t, std::uint16_t> cases[] = {
      {0, 0},        {65535, 65535},       {65536, 0},
      {70000, 4464}, {0x12345678, 0x5678}, {std::numeric_limits<std::uint32_t>::max(), 65535}};
  for (const auto& [sent, kept] : cases) {
    pb::GeneralInfo message = General::FullMessage();
    message.set_bridge_port_number(sent);
    EXPECT_EQ(General::ToNative(message, General::OtherRecord()).bridge_port_number, kept) << sent;
  }
}

TEST(GeneralPart, MessageToNative_AnAbsentBridgePortNumberLeavesTheMemberUnchanged) {
  pb::GeneralInfo message = General::FullMessage();
  message.clear_bridge_port_number();
  IntfEntry::GeneralInfo expected = General::FullRecord();
  expected.bridge_port_number = General::OtherRecord().bridge_port_number;
  EXPECT_THAT(General::ToNative(message, General::OtherRecord()), EqualsNative(expected));
}

TEST(GeneralPart, RoundTrip_PreservesStringsOfAnyLengthAndContent) {
  pb::GeneralInfo message = General::FullMessage();
  message.set_intf_name(std::string("a\0b", 3));
  message.set_phy_addr("\xFF\xFE");
  message.set_redundancy_group_phy_addr(std::string(100000, 'x'));
  const IntfEntry::GeneralInfo record = General::ToNative(message, General::OtherRecord());
  EXPECT_EQ(record.intf_name, std::string("a\0b", 3));
  EXPECT_EQ(record.phy_addr, "\xFF\xFE");
  EXPECT_EQ(record.redundancy_group_phy_addr, std::string(100000, 'x'));
  EXPECT_THAT(General::ToMessage(record), EqualsMessage(message));
}

// The three states have two values each: one at a time, so that none is mistaken for another.
TEST(StatusPart, RoundTrip_EachStateAloneSetsItsMember) {
  const auto zero = FromText<pb::StatusInfo>(Status::kDefault);
  for (const char* name : {"adminStatus", "operationalStatus", "linkStatus"}) {
    pb::StatusInfo message = zero;
    message.GetReflection()->SetEnumValue(&message, message.GetDescriptor()->FindFieldByName(name),
                                          1);
    const IntfEntry::StatusInfo record = Status::ToNative(message, {});
    EXPECT_EQ(NativeDifference(IntfEntry::StatusInfo{}, record),
              std::string("- ") + name + ": 0\n+ " + name + ": 1\n");
    EXPECT_THAT(Status::ToMessage(record), EqualsMessage(message));
  }
}

TEST(StatusPart, RoundTrip_TheOperationalSpeedIsNeitherScaledNorChecked) {
  for (const std::uint32_t speed : {0U, 11U, 1410065408U, 4294967295U}) {
    pb::StatusInfo message = Status::FullMessage();
    message.set_operationalspeed(speed);
    const IntfEntry::StatusInfo record = Status::ToNative(message, {});
    EXPECT_EQ(record.operationalSpeed, speed);
    EXPECT_EQ(Status::ToMessage(record).operationalspeed(), speed);
  }
}

TEST(StatusPart, MessageToNative_AnUnlistedStateLeavesTheMembersBeforeItWritten) {
  const IntfEntry::StatusInfo before = Status::OtherRecord();
  pb::StatusInfo message = Status::FullMessage();
  message.set_adminstatus(Unlisted<pb::AdminStatus>());
  EXPECT_THAT(Status::RejectedToNative(message, before), EqualsNative(before));
  message = Status::FullMessage();
  message.set_operationalstatus(Unlisted<pb::OperationalStatus>());
  IntfEntry::StatusInfo expected = before;
  expected.adminStatus = IntfEntry::IF_ADMIN_DOWN;
  EXPECT_THAT(Status::RejectedToNative(message, before), EqualsNative(expected));
  message = Status::FullMessage();
  message.set_linkstatus(Unlisted<pb::LinkStatus>());
  expected.operationalStatus = IntfEntry::DOWN;
  EXPECT_THAT(Status::RejectedToNative(message, before), EqualsNative(expected));
}

TEST(StatusPart, NativeToMessage_AnUnlistedStateLeavesTheMessageUnchanged) {
  const auto before = FromText<pb::StatusInfo>("operationalSpeed: 5 linkStatus: LINK_UP");
  IntfEntry::StatusInfo record = Status::FullRecord();
  record.adminStatus = Unlisted<IntfEntry::AdminStatus>();
  EXPECT_THAT(Status::RejectedToMessage(record, before), EqualsMessage(before));
  record = Status::FullRecord();
  record.operationalStatus = Unlisted<IntfEntry::OperationalStatus>();
  EXPECT_THAT(Status::RejectedToMessage(record, before), EqualsMessage(before));
  record = Status::FullRecord();
  record.linkStatus = Unlisted<IntfEntry::LinkStatus>();
  EXPECT_THAT(Status::RejectedToMessage(record, before), EqualsMessage(before));
}

TEST(PhysicalPart, MessageToNative_TheMtuIsWidened) {
  pb::PhysicalInfo message = Physical::FullMessage();
  message.set_intf_mtu(4294967295U);
  IntfEntry::PhysicalInfo before;
  before.intf_mtu = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(Physical::ToNative(message, before).intf_mtu, 4294967295U);
}

TEST(PhysicalPart, NativeToMessage_TheMtuKeepsItsLow32Bits) {
  const std::pair<std::uint64_t, std::uint32_t> cases[] = {
      {4294968796U, 1500},
      {4294967295U, 4294967295U},
      {4294967296U, 0},
      {std::numeric_limits<std::uint64_t>::max(), 4294967295U}};
  for (const auto& [native, kept] : cases) {
    IntfEntry::PhysicalInfo record = Physical::FullRecord();
    record.intf_mtu = native;
    EXPECT_EQ(Physical::ToMessage(record).intf_mtu(), kept) << native;
  }
}

TEST(PhysicalPart, AfterAnUnlistedValueTheFieldsBeforeItAreWritten) {
  const IntfEntry::PhysicalInfo before = Physical::OtherRecord();
  IntfEntry::PhysicalInfo expected = before;
  pb::PhysicalInfo message = Physical::FullMessage();
  message.set_eth_speed(Unlisted<pb::EthernetSpeed>());
  expected.intf_mtu = 9216;
  EXPECT_THAT(Physical::RejectedToNative(message, before), EqualsNative(expected));
  message = Physical::FullMessage();
  message.set_eth_duplex_mode(Unlisted<pb::EthernetDuplexMode>());
  expected.eth_speed = IntfEntry::SPEED_25_GBS;
  EXPECT_THAT(Physical::RejectedToNative(message, before), EqualsNative(expected));

  IntfEntry::PhysicalInfo record = Physical::FullRecord();
  record.eth_speed = Unlisted<IntfEntry::EthernetSpeed>();
  EXPECT_THAT(Physical::RejectedToMessage(record), EqualsText<pb::PhysicalInfo>("intf_mtu: 9216"));
  record = Physical::FullRecord();
  record.eth_duplex_mode = Unlisted<IntfEntry::EthernetDuplexMode>();
  EXPECT_THAT(Physical::RejectedToMessage(record),
              EqualsText<pb::PhysicalInfo>("intf_mtu: 9216 eth_speed: SPEED_25_GBS"));
}

TEST(TypePart, AfterAnUnlistedValueTheFieldsBeforeItAreWritten) {
  const IntfEntry::TypeInfo before = Type::OtherRecord();
  pb::TypeInfo message = Type::FullMessage();
  message.set_interfacetype(Unlisted<pb::InterfaceType>());
  EXPECT_THAT(Type::RejectedToNative(message, before), EqualsNative(before));
  message = Type::FullMessage();
  message.set_vlantype(Unlisted<pb::VlanType>());
  IntfEntry::TypeInfo expected = Type::FullRecord();
  expected.vlanType = before.vlanType;
  EXPECT_THAT(Type::RejectedToNative(message, before), EqualsNative(expected));

  IntfEntry::TypeInfo record = Type::FullRecord();
  record.interfaceType = Unlisted<IntfEntry::InterfaceType>();
  EXPECT_THAT(Type::RejectedToMessage(record), EqualsText<pb::TypeInfo>(""));
  record = Type::FullRecord();
  record.vlanType = Unlisted<IntfEntry::VlanType>();
  pb::TypeInfo without = Type::FullMessage();
  without.clear_vlantype();
  EXPECT_THAT(Type::RejectedToMessage(record), EqualsMessage(without));
}

TEST(TypePart, NativeToMessage_ReplacesTheNestedFlagsWithTheirUnknownFields) {
  pb::TypeInfo message;
  message.mutable_interfaceflags()->mutable_unknown_fields()->AddVarint(98, 6);
  EXPECT_THAT(UnknownVarints(Type::ToMessage({}, message).interfaceflags()), IsEmpty());
}

TEST(BlockPart, EveryProtocolIsTranslated) {
  for (int number = 0; number <= 12; ++number) {
    pb::BlockInfo message = Block::FullMessage();
    message.set_protocol(static_cast<pb::ProtocolType>(number));
    const IntfEntry::BlockInfo record = Block::ToNative(message, Block::OtherRecord());
    EXPECT_EQ(record.protocol, number == 0 ? 12 : number - 1);
    EXPECT_THAT(Block::ToMessage(record), EqualsMessage(message));
  }
}

TEST(BlockPart, AnUnlistedProtocolBecomesUnknownAndAnUnlistedStateForwarding) {
  for (const std::int32_t number : NumbersOutside(13)) {
    const IntfEntry::BlockInfo record = {static_cast<ProtocolType>(number),
                                         static_cast<BlockState>(number)};
    EXPECT_THAT(Block::ToMessage(record),
                EqualsText<pb::BlockInfo>("protocol: PROTOCOL_UNKNOWN state: BLOCK_STATE_FORWARD"));
    pb::BlockInfo message;
    message.set_protocol(static_cast<pb::ProtocolType>(number));
    message.set_state(static_cast<pb::BlockState>(number));
    EXPECT_THAT(Block::ToNative(message, Block::FullRecord()),
                EqualsNative(IntfEntry::BlockInfo{PROTOCOL_UNKNOWN, BLOCK_STATE_FORWARD}));
  }
}

}  // namespace
