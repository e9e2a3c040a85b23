// The rules by which a conversion fails, each with its field and its reason.
#ifndef NDEBUG
#error "messages with unlisted values can only be made by code without assertions"
#endif

#include <gmock/gmock.h>
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/dynamic_message.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "audit_info.pb.h"
#include "l2_sub_if.pb.h"
#include "sysinfo.pb.h"
#include "tests/check/check_matchers.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/unknown_fields.h"
#include "virtual_if.pb.h"

namespace pb = zorl2::protobuf;

using testing::IsEmpty;
using zorl2::check::Check;
using zorl2::check::Outcome;
using zorl2::check::Verdict;
using zorl2_test::CheckText;
using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;

namespace {

const Verdict kConverts;

Verdict Missing(const char* field, const char* reason) {
  return {Outcome::kReturnsFalse, "required", field, reason};
}

Verdict WrongSize(Outcome outcome, const char* field, const char* reason) {
  return {outcome, "identifier.size", field, reason};
}

Verdict Throws(const char* rule, const char* field, const char* reason) {
  return {Outcome::kThrows, rule, field, reason};
}

template <typename Message>
Message Parsed(const std::string& bytes) {
  Message message;
  EXPECT_TRUE(message.ParsePartialFromString(bytes));
  return message;
}

TEST(Rules, TheVerdictOnAMessageThatConvertsIsEmpty) {
  EXPECT_EQ(kConverts.outcome, Outcome::kConverts);
  EXPECT_THAT(kConverts.rule, IsEmpty());
  EXPECT_THAT(kConverts.field, IsEmpty());
  EXPECT_THAT(kConverts.reason, IsEmpty());
}

// Identifiers.

TEST(Rules, AnIdentifierOfFourValuesConverts) {
  EXPECT_EQ(CheckText<pb::Zorid>("value: [1, 2, 3, 300]"), kConverts);
}

TEST(Rules, AnIdentifierOfAnotherSizeIsRejected) {
  EXPECT_EQ(CheckText<pb::Zorid>(""),
            WrongSize(Outcome::kReturnsFalse, "value", "0 values (expected 4)"));
  EXPECT_EQ(CheckText<pb::Zorid>("value: 1"),
            WrongSize(Outcome::kReturnsFalse, "value", "1 value (expected 4)"));
  EXPECT_EQ(CheckText<pb::Zorid>("value: [1, 2, 3, 4, 5]"),
            WrongSize(Outcome::kReturnsFalse, "value", "5 values (expected 4)"));
}

TEST(Rules, EveryIdentifierRecordConverts) {
  EXPECT_EQ(Check(zorid_t{{0, 0, 0, 0}}), kConverts);
  EXPECT_EQ(Check(zorid_t{{1, 2, 3, 255}}), kConverts);
}

// Interface entries.

TEST(Rules, AFullEntryConverts) {
  EXPECT_EQ(Check(FullEntryMessage()), kConverts);
  EXPECT_EQ(Check(FullEntry()), kConverts);
}

TEST(Rules, AMissingFieldOfAnEntryIsNamedWithItsMessage) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_typeinfo()->mutable_interfaceflags()->clear_l2_bundle();
  EXPECT_EQ(Check(entry),
            Missing("typeInfo.interfaceFlags.l2_bundle", "missing, required by InterfaceFlags"));
  entry.mutable_blockinfo(1)->clear_state();
  entry.clear_zorid();
  EXPECT_EQ(Check(entry), Missing("zorid", "missing, required by IntfEntry"));
  entry = FullEntryMessage();
  entry.mutable_blockinfo(1)->clear_state();
  EXPECT_EQ(Check(entry), Missing("blockInfo[1].state", "missing, required by BlockInfo"));
}

TEST(Rules, AnUnlistedValueThatAParserSetAsideIsTheReason) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_typeinfo()->clear_interfacetype();
  auto& unknown = *entry.mutable_typeinfo()->mutable_unknown_fields();
  unknown.AddVarint(1, 17);
  EXPECT_EQ(Check(entry), Missing("typeInfo.interfaceType",
                                  "unlisted value 17 (listed: 0 to 4), required by TypeInfo"));
  unknown.AddVarint(1, static_cast<std::uint64_t>(-3));
  EXPECT_EQ(Check(entry), Missing("typeInfo.interfaceType",
                                  "unlisted value -3 (listed: 0 to 4), required by TypeInfo"));
}

TEST(Rules, AnUnknownFieldThatIsNoUnlistedValueIsNotTheReason) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_typeinfo()->clear_interfacetype();
  auto& unknown = *entry.mutable_typeinfo()->mutable_unknown_fields();
  unknown.AddVarint(3, 17);
  unknown.AddFixed32(1, 17);
  unknown.AddVarint(1, 4);
  EXPECT_EQ(Check(entry), Missing("typeInfo.interfaceType", "missing, required by TypeInfo"));
}

TEST(Rules, AnEntryAcceptsMalformedIdentifiersAndMissingOptionalFields) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_zorid()->add_value(5);
  entry.clear_parent();
  entry.mutable_generalinfo()->clear_bridge_port_number();
  EXPECT_EQ(Check(entry), kConverts);
}

TEST(Rules, AnEntryAcceptsUnlistedProtocolsAndBlockStates) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.add_shutdownprotos(static_cast<pb::ProtocolType>(13));
  entry.mutable_blockinfo(0)->set_protocol(static_cast<pb::ProtocolType>(-1));
  entry.mutable_blockinfo(1)->set_state(static_cast<pb::BlockState>(2));
  EXPECT_EQ(Check(entry), kConverts);
}

TEST(Rules, AnUnlistedValueInAMessageThrows) {
  pb::IntfEntry entry = FullEntryMessage();
  // From the field that the converter reads last to the first.
  entry.set_intfcategory(static_cast<pb::InterfaceCategory>(5));
  EXPECT_EQ(Check(entry),
            Throws("category.unlisted", "intfCategory", "unlisted value 5 (listed: 0 to 4)"));
  entry.mutable_typeinfo()->set_vlantype(static_cast<pb::VlanType>(6));
  EXPECT_EQ(Check(entry),
            Throws("enum.unlisted", "typeInfo.vlanType", "unlisted value 6 (listed: 0 to 4)"));
  entry.mutable_typeinfo()->set_interfacetype(static_cast<pb::InterfaceType>(7));
  EXPECT_EQ(Check(entry),
            Throws("enum.unlisted", "typeInfo.interfaceType", "unlisted value 7 (listed: 0 to 4)"));
  entry.mutable_physicalinfo()->set_eth_duplex_mode(static_cast<pb::EthernetDuplexMode>(8));
  EXPECT_EQ(Check(entry), Throws("enum.unlisted", "physicalInfo.eth_duplex_mode",
                                 "unlisted value 8 (listed: 0 to 2)"));
  entry.mutable_physicalinfo()->set_eth_speed(static_cast<pb::EthernetSpeed>(12));
  EXPECT_EQ(Check(entry), Throws("enum.unlisted", "physicalInfo.eth_speed",
                                 "unlisted value 12 (listed: 0 to 11)"));
  entry.mutable_statusinfo()->set_linkstatus(static_cast<pb::LinkStatus>(9));
  EXPECT_EQ(Check(entry),
            Throws("enum.unlisted", "statusInfo.linkStatus", "unlisted value 9 (listed: 0 to 1)"));
  entry.mutable_statusinfo()->set_operationalstatus(static_cast<pb::OperationalStatus>(10));
  EXPECT_EQ(Check(entry), Throws("enum.unlisted", "statusInfo.operationalStatus",
                                 "unlisted value 10 (listed: 0 to 1)"));
  entry.mutable_statusinfo()->set_adminstatus(static_cast<pb::AdminStatus>(-11));
  EXPECT_EQ(Check(entry), Throws("enum.unlisted", "statusInfo.adminStatus",
                                 "unlisted value -11 (listed: 0 to 1)"));
  entry.clear_intfcategory();
  EXPECT_EQ(Check(entry), Missing("intfCategory", "missing, required by IntfEntry"));
}

TEST(Rules, AnUnlistedValueInARecordThrows) {
  const auto build = [](IntfEntry::StatusInfo status, IntfEntry::PhysicalInfo physical,
                        IntfEntry::TypeInfo type, int category) {
    return IntfEntryBuilder(FullEntry())
        .addStatusInfo(status)
        .addPhysicalInfo(physical)
        .addTypeInfo(type)
        .setInterfaceCategory(static_cast<InterfaceCategory>(category))
        .Build();
  };
  IntfEntry::StatusInfo status;
  IntfEntry::PhysicalInfo physical;
  IntfEntry::TypeInfo type;
  EXPECT_EQ(Check(build(status, physical, type, 7)),
            Throws("category.unlisted", "intfCategory", "unlisted value 7 (listed: 0 to 4)"));
  type.vlanType = static_cast<IntfEntry::VlanType>(8);
  EXPECT_EQ(Check(build(status, physical, type, 7)),
            Throws("enum.unlisted", "typeInfo.vlanType", "unlisted value 8 (listed: 0 to 4)"));
  type.interfaceType = static_cast<IntfEntry::InterfaceType>(9);
  EXPECT_EQ(Check(build(status, physical, type, 7)),
            Throws("enum.unlisted", "typeInfo.interfaceType", "unlisted value 9 (listed: 0 to 4)"));
  physical.eth_duplex_mode = static_cast<IntfEntry::EthernetDuplexMode>(10);
  EXPECT_EQ(Check(build(status, physical, type, 7)),
            Throws("enum.unlisted", "physicalInfo.eth_duplex_mode",
                   "unlisted value 10 (listed: 0 to 2)"));
  physical.eth_speed = static_cast<IntfEntry::EthernetSpeed>(13);
  EXPECT_EQ(
      Check(build(status, physical, type, 7)),
      Throws("enum.unlisted", "physicalInfo.eth_speed", "unlisted value 13 (listed: 0 to 11)"));
  status.linkStatus = static_cast<IntfEntry::LinkStatus>(14);
  EXPECT_EQ(Check(build(status, physical, type, 7)),
            Throws("enum.unlisted", "statusInfo.linkStatus", "unlisted value 14 (listed: 0 to 1)"));
  status.operationalStatus = static_cast<IntfEntry::OperationalStatus>(15);
  EXPECT_EQ(Check(build(status, physical, type, 7)),
            Throws("enum.unlisted", "statusInfo.operationalStatus",
                   "unlisted value 15 (listed: 0 to 1)"));
  status.adminStatus = static_cast<IntfEntry::AdminStatus>(-16);
  EXPECT_EQ(
      Check(build(status, physical, type, 7)),
      Throws("enum.unlisted", "statusInfo.adminStatus", "unlisted value -16 (listed: 0 to 1)"));
}

// State signals.

TEST(Rules, ASignalWithAMissingFieldIsRejected) {
  EXPECT_EQ(CheckText<pb::ShutStateSync>("intfs { zorid { value: 1 } }"),
            Missing("shutProtocol", "missing, required by ShutStateSync"));
  EXPECT_EQ(CheckText<pb::BlockStateSync>("intfs { }"),
            Missing("blockProtocol", "missing, required by BlockStateSync"));
  EXPECT_EQ(CheckText<pb::ShutStateSync>(
                "shutProtocol: L1_PROTO intfs { zorid { } state: true } intfs { state: true }"),
            Missing("intfs[1].zorid", "missing, required by ShutStateInfo"));
  EXPECT_EQ(CheckText<pb::BlockStateSync>("blockProtocol: STP intfs { zorid { value: 1 } }"),
            Missing("intfs[0].state", "missing, required by BlockStateInfo"));
  // A block state of 2.
  EXPECT_EQ(
      Check(Parsed<pb::BlockStateSync>({8, 4, 0x12, 4, 0x0a, 0, 0x10, 2})),
      Missing("intfs[0].state", "unlisted value 2 (listed: 0 to 1), required by BlockStateInfo"));
}

TEST(Rules, ASignalForL1ProtoOrL2ProtoThrows) {
  EXPECT_EQ(CheckText<pb::ShutStateSync>("shutProtocol: L1_PROTO intfs { zorid { } state: true }"),
            Throws("protocol.unlisted", "shutProtocol",
                   "L1_PROTO (expected a protocol of a state signal)"));
  EXPECT_EQ(CheckText<pb::BlockStateSync>("blockProtocol: L2_PROTO"),
            Throws("protocol.unlisted", "blockProtocol",
                   "L2_PROTO (expected a protocol of a state signal)"));
  ShutStateInfoSyncSignal shut;
  shut.protocol = L2_PROTO;
  EXPECT_EQ(Check(shut), Throws("protocol.unlisted", "shutProtocol",
                                "L2_PROTO (expected a protocol of a state signal)"));
  BlockStateInfoSyncSignal block;
  block.protocol = L1_PROTO;
  EXPECT_EQ(Check(block), Throws("protocol.unlisted", "blockProtocol",
                                 "L1_PROTO (expected a protocol of a state signal)"));
}

TEST(Rules, ASignalOfAnUnlistedProtocolThrows) {
  pb::ShutStateSync shut_message;
  shut_message.set_shutprotocol(static_cast<pb::ProtocolType>(13));
  EXPECT_EQ(Check(shut_message),
            Throws("protocol.unlisted", "shutProtocol", "unlisted value 13 (listed: 0 to 12)"));
  pb::BlockStateSync block_message;
  block_message.set_blockprotocol(static_cast<pb::ProtocolType>(-1));
  EXPECT_EQ(Check(block_message),
            Throws("protocol.unlisted", "blockProtocol", "unlisted value -1 (listed: 0 to 12)"));
  ShutStateInfoSyncSignal shut;
  shut.protocol = static_cast<ProtocolType>(14);
  EXPECT_EQ(Check(shut),
            Throws("protocol.unlisted", "shutProtocol", "unlisted value 14 (listed: 0 to 12)"));
  BlockStateInfoSyncSignal block;
  block.protocol = static_cast<ProtocolType>(-2);
  EXPECT_EQ(Check(block),
            Throws("protocol.unlisted", "blockProtocol", "unlisted value -2 (listed: 0 to 12)"));
}

TEST(Rules, AMalformedIdentifierInASignalTerminatesTheProcess) {
  EXPECT_EQ(CheckText<pb::ShutStateSync>(R"pb(
              shutProtocol: STP
              intfs {
                zorid { value: [ 1, 2, 3, 4 ] }
                state: true
              }
              intfs {
                zorid { value: [ 1, 2, 3 ] }
                state: false
              }
              intfs {
                zorid {}
                state: false
              })pb"),
            WrongSize(Outcome::kEndsProcess, "intfs[1].zorid", "3 values (expected 4)"));
  EXPECT_EQ(CheckText<pb::BlockStateSync>(
                "blockProtocol: PROTOCOL_UNKNOWN intfs { zorid { } state: BLOCK_STATE_BLOCK }"),
            WrongSize(Outcome::kEndsProcess, "intfs[0].zorid", "0 values (expected 4)"));
}

TEST(Rules, OtherSignalsConvert) {
  EXPECT_EQ(CheckText<pb::ShutStateSync>("shutProtocol: BACKUPLINK"), kConverts);
  pb::BlockStateSync message = FromText<pb::BlockStateSync>(
      "blockProtocol: PROTOCOL_UNKNOWN intfs { zorid { value: [ 1, 2, 3, 4 ] } state: "
      "BLOCK_STATE_BLOCK }");
  message.mutable_intfs(0)->set_state(static_cast<pb::BlockState>(7));
  EXPECT_EQ(Check(message), kConverts);
  BlockStateInfoSyncSignal record;
  record.protocol = PROTOCOL_UNKNOWN;
  record.blockStates[{{1, 2, 3, 4}}] = static_cast<BlockState>(7);
  EXPECT_EQ(Check(record), kConverts);
  EXPECT_EQ(Check(ShutStateInfoSyncSignal{{{{{4, 3, 2, 1}}, true}}, BACKUPLINK}), kConverts);
}

// Registrations.

constexpr char kClient[] = R"pb(
  clientAddress: 5
  protocolType: L1_PROTO
  intfCategory { L1: true L2: false VP: true L2_SUB_IF: false VIRTUAL_IF: true }
  token: "t"
)pb";

TEST(Rules, ARegistrationWithAMissingFieldOrFlagIsRejected) {
  auto client = FromText<pb::InformationClient>(kClient);
  client.mutable_intfcategory()->clear_vp();
  EXPECT_EQ(Check(client), Missing("intfCategory.VP", "missing, required by IntfCategory"));
  client.clear_token();
  EXPECT_EQ(Check(client), Missing("token", "missing, required by InformationClient"));
}

TEST(Rules, ARegistrationAcceptsEveryProtocolAndCategory) {
  auto client = FromText<pb::InformationClient>(kClient);
  EXPECT_EQ(Check(client), kConverts);
  client.set_protocoltype(static_cast<pb::ProtocolType>(77));
  EXPECT_EQ(Check(client), kConverts);
  ZORL2InfoClientConfig record;
  record.protocolType = static_cast<ProtocolType>(77);
  record.interfaceCategories = {static_cast<InterfaceCategory>(9)};
  EXPECT_EQ(Check(record), kConverts);
}

// Member operations.

Verdict NoIdentifier(const char* field) {
  return {Outcome::kReturnsFalse, "identifier.missing", field, "missing (expected 4 values)"};
}

TEST(Rules, AMemberOperationWithoutAnIdentifierIsRejected) {
  EXPECT_EQ(CheckText<pb::LagMemberOperationProto>(""), NoIdentifier("lag"));
  EXPECT_EQ(CheckText<pb::LagMemberOperationProto>("member { value: 1 }"), NoIdentifier("lag"));
  EXPECT_EQ(CheckText<pb::LagMemberOperationProto>("lag { value: [ 1, 2, 3, 4 ] }"),
            NoIdentifier("member"));
  // Presence is tested before the sizes.
  EXPECT_EQ(CheckText<pb::LagMemberOperationProto>("lag { }"), NoIdentifier("member"));
}

TEST(Rules, AMemberOperationWithAMalformedIdentifierIsRejected) {
  EXPECT_EQ(CheckText<pb::LagMemberOperationProto>("lag { } member { value: 1 }"),
            WrongSize(Outcome::kReturnsFalse, "lag", "0 values (expected 4)"));
  EXPECT_EQ(CheckText<pb::LagMemberOperationProto>(
                "lag { value: [ 1, 2, 3, 4 ] } member { value: [ 5, 6, 7, 8, 9 ] }"),
            WrongSize(Outcome::kReturnsFalse, "member", "5 values (expected 4)"));
}

TEST(Rules, OtherMemberOperationsConvert) {
  EXPECT_EQ(
      CheckText<pb::LagMemberOperationProto>(
          "lag { value: [ 1, 2, 3, 4 ] } member { value: [ 5, 6, 7, 8 ] } distributing: true"),
      kConverts);
  EXPECT_EQ(Check(LagMemberOperation{}), kConverts);
}

// Messages that hold such messages, and messages without a native record.

pb::IntfEntryList List() {
  pb::IntfEntryList list;
  *list.mutable_infoclient() = FromText<pb::InformationClient>(kClient);
  for (int i = 0; i < 3; ++i) *list.add_intfentry() = FullEntryMessage();
  return list;
}

TEST(Rules, AListConvertsWithItsElements) { EXPECT_EQ(Check(List()), kConverts); }

TEST(Rules, TheFirstElementThatFailsDecidesForItsList) {
  pb::IntfEntryList list = List();
  list.mutable_intfentry(2)->clear_zorid();
  EXPECT_EQ(Check(list), Missing("intfEntry[2].zorid", "missing, required by IntfEntry"));
  list.mutable_intfentry(1)->mutable_physicalinfo()->set_eth_speed(
      static_cast<pb::EthernetSpeed>(12));
  EXPECT_EQ(Check(list), Throws("enum.unlisted", "intfEntry[1].physicalInfo.eth_speed",
                                "unlisted value 12 (listed: 0 to 11)"));
  list.mutable_infoclient()->clear_token();
  EXPECT_EQ(Check(list), Missing("infoClient.token", "missing, required by InformationClient"));
  list.clear_infoclient();
  EXPECT_EQ(Check(list), Missing("infoClient", "missing, required by IntfEntryList"));
}

TEST(Rules, AnIndicationFailsWithItsEntry) {
  pb::IntfIndication indication;
  indication.set_indcategory(pb::VP);
  indication.set_indtype(pb::DEL);
  *indication.mutable_intfentry() = FullEntryMessage();
  EXPECT_EQ(Check(indication), kConverts);
  indication.mutable_intfentry()->mutable_generalinfo()->clear_phy_addr();
  EXPECT_EQ(Check(indication),
            Missing("intfEntry.generalInfo.phy_addr", "missing, required by GeneralInfo"));
  indication.clear_indtype();
  indication.mutable_unknown_fields()->AddVarint(2, 3);
  EXPECT_EQ(Check(indication), Missing("indType",
                                       "unlisted value 3 (listed: 0 to 2), required by "
                                       "IntfIndication"));
}

TEST(Rules, AMessageWithoutANativeRecordNeedsItsRequiredFieldsOnly) {
  EXPECT_EQ(CheckText<pb::SysInfoIndication>("sysInfo { sys_mac: 'a' sys_descr: 'b' }"),
            Missing("sysInfo.sys_name", "missing, required by SysInfo"));
  EXPECT_EQ(CheckText<pb::HoldTimeConfig>("configs { zorid { } down_ms: 1 } configs { zorid { } }"),
            Missing("configs[1].down_ms", "missing, required by HoldTimeInstance"));
  EXPECT_EQ(CheckText<pb::HoldTimeConfig>("configs { zorid { } down_ms: 1 }"), kConverts);
  EXPECT_EQ(CheckText<pb::VirtualInterfaceOperation>("virtualInterface { value: 1 }"), kConverts);
  EXPECT_EQ(CheckText<pb::L2SubinterfaceOperation>(""), kConverts);
  EXPECT_EQ(CheckText<pb::AuditInfo>("internal_caches: 'c'"), kConverts);
}

// Types of another descriptor pool.

using google::protobuf::DescriptorPool;
using google::protobuf::FieldDescriptorProto;
using google::protobuf::FileDescriptorProto;

// A copy of the schema, which a test may change before it reads a message.
class OtherSchema {
 public:
  OtherSchema() { Add(*pb::ShutStateSync::descriptor()->file()); }

  // zorid.proto, information_client.proto or intf_state.proto.
  FileDescriptorProto& File(const std::string& name) {
    for (FileDescriptorProto& file : files_) {
      if (file.name() == name) return file;
    }
    throw std::invalid_argument(name);
  }

  Verdict CheckBytes(const std::string& type, const std::string& bytes) {
    DescriptorPool pool;
    for (const FileDescriptorProto& file : files_) EXPECT_NE(pool.BuildFile(file), nullptr);
    google::protobuf::DynamicMessageFactory factory;
    const std::unique_ptr<google::protobuf::Message> message(
        factory.GetPrototype(pool.FindMessageTypeByName("zorl2.protobuf." + type))->New());
    EXPECT_TRUE(message->ParsePartialFromString(bytes));
    EXPECT_THAT(zorl2::check::FindLosses(*message), IsEmpty());
    return Check(*message);
  }

 private:
  void Add(const google::protobuf::FileDescriptor& file) {
    for (int i = 0; i < file.dependency_count(); ++i) Add(*file.dependency(i));
    for (const FileDescriptorProto& added : files_) {
      if (added.name() == file.name()) return;
    }
    file.CopyTo(&files_.emplace_back());
  }

  std::vector<FileDescriptorProto> files_;
};

TEST(Rules, ADynamicMessageIsCheckedAsItsType) {
  const auto signal =
      FromText<pb::ShutStateSync>("shutProtocol: STP intfs { zorid { value: 9 } state: true }");
  EXPECT_EQ(OtherSchema().CheckBytes("ShutStateSync", signal.SerializeAsString()),
            WrongSize(Outcome::kEndsProcess, "intfs[0].zorid", "1 value (expected 4)"));
  EXPECT_EQ(OtherSchema().CheckBytes("Zorid", ""),
            WrongSize(Outcome::kReturnsFalse, "value", "0 values (expected 4)"));
}

// An empty Zorid, of a type with one difference.
template <typename Change>
Verdict CheckChangedZorid(const Change& change) {
  OtherSchema schema;
  change(*schema.File("zorid.proto").mutable_message_type(0));
  return schema.CheckBytes("Zorid", "");
}

TEST(Rules, ATypeOfAnotherSchemaNeedsItsRequiredFieldsOnly) {
  using Type = google::protobuf::DescriptorProto;
  const auto add_field = [](Type& type) {
    FieldDescriptorProto& field = *type.add_field();
    field.set_name("mask");
    field.set_number(2);
    field.set_type(FieldDescriptorProto::TYPE_UINT32);
    field.set_label(FieldDescriptorProto::LABEL_OPTIONAL);
  };
  EXPECT_EQ(CheckChangedZorid(add_field), kConverts);
  EXPECT_EQ(CheckChangedZorid([](Type& type) { type.mutable_field(0)->set_number(2); }), kConverts);
  EXPECT_EQ(CheckChangedZorid([](Type& type) {
              type.mutable_field(0)->set_type(FieldDescriptorProto::TYPE_SINT32);
            }),
            kConverts);
  EXPECT_EQ(CheckChangedZorid([](Type& type) {
              type.mutable_field(0)->clear_options();
              type.mutable_field(0)->set_label(FieldDescriptorProto::LABEL_OPTIONAL);
            }),
            kConverts);
  EXPECT_EQ(CheckChangedZorid([](Type& type) { type.clear_field(); }), kConverts);

  // In a part of the type.
  const std::string signal =
      FromText<pb::ShutStateSync>("shutProtocol: L1_PROTO intfs { zorid { value: 9 } state: true }")
          .SerializeAsString();
  OtherSchema schema;
  EXPECT_EQ(schema.CheckBytes("ShutStateSync", signal).rule, "protocol.unlisted");
  add_field(*schema.File("zorid.proto").mutable_message_type(0));
  EXPECT_EQ(schema.CheckBytes("ShutStateSync", signal), kConverts);

  OtherSchema more_protocols;
  auto& protocols = *more_protocols.File("information_client.proto").mutable_enum_type(0);
  protocols.mutable_value(12)->set_number(13);
  EXPECT_EQ(more_protocols.CheckBytes("ShutStateSync", signal), kConverts);
  protocols.mutable_value()->RemoveLast();
  EXPECT_EQ(more_protocols.CheckBytes("ShutStateSync", signal), kConverts);
}

TEST(Rules, ATypeOfAnotherNameNeedsItsRequiredFieldsOnly) {
  OtherSchema schema;
  FileDescriptorProto& file = schema.File("zorid.proto");
  *file.add_message_type() = file.message_type(0);
  file.mutable_message_type(1)->set_name("Address");
  EXPECT_EQ(schema.CheckBytes("Address", ""), kConverts);
  EXPECT_EQ(schema.CheckBytes("Zorid", "").rule, "identifier.size");
}

}  // namespace
