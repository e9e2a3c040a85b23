// The losses of successful conversions: the field, its value and the value that replaces it.
#ifndef NDEBUG
#error "messages with unlisted values can only be made by code without assertions"
#endif

#include <gmock/gmock.h>

#include "tests/check/check_matchers.h"
#include "tests/support/entry_fixtures.h"
#include "virtual_if.pb.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::IsEmpty;
using zorl2::check::FindLosses;
using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;
using zorl2_test::LossesOfText;

namespace {

Loss Replaced(const char* field, const char* before, const char* after) {
  return {LossKind::kReplaced, field, before, after};
}

Loss Narrowed(const char* field, const char* before, const char* after) {
  return {LossKind::kNarrowed, field, before, after};
}

Loss Unknown(const char* field, const char* value) {
  return {LossKind::kUnknownField, field, value, ""};
}

Loss Defaulted(const char* field, const char* after) {
  return {LossKind::kDefaulted, field, "", after};
}

// Identifiers.

TEST(Losses, ANarrowedIdentifierIsOneLoss) {
  EXPECT_THAT(LossesOfText<pb::Zorid>("value: [ 0, 0, 1, 300 ]"),
              ElementsAre(Narrowed("value", "0.0.1.300", "0.0.1.44")));
  EXPECT_THAT(LossesOfText<pb::Zorid>("value: [ 256, 4294967295, 255, 0 ]"),
              ElementsAre(Narrowed("value", "256.4294967295.255.0", "0.255.255.0")));
  EXPECT_THAT(LossesOfText<pb::Zorid>("value: [ 0, 0, 1, 255 ]"), IsEmpty());
  EXPECT_THAT(FindLosses(zorid_t{{1, 2, 3, 4}}), IsEmpty());
}

TEST(Losses, AMessageThatDoesNotConvertLosesNothing) {
  EXPECT_THAT(LossesOfText<pb::Zorid>("value: [ 300, 1, 1 ]"), IsEmpty());
  pb::IntfEntry entry = FullEntryMessage();
  entry.clear_parent();
  entry.clear_intfcategory();
  EXPECT_THAT(FindLosses(entry), IsEmpty());
  EXPECT_THAT(FindLosses(IntfEntryBuilder(FullEntry())
                             .addPhysicalInfo({1ULL << 32, IntfEntry::SPEED_1_GBS, IntfEntry::FULL})
                             .setInterfaceCategory(static_cast<InterfaceCategory>(7))
                             .Build()),
              IsEmpty());
}

// Interface entries.

TEST(Losses, AFullEntryLosesNothing) {
  EXPECT_THAT(FindLosses(FullEntryMessage()), IsEmpty());
  EXPECT_THAT(FindLosses(FullEntry()), IsEmpty());
}

TEST(Losses, AMalformedIdentifierOfAnEntryBecomesZero) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_zorid()->mutable_value()->Truncate(2);
  entry.mutable_parent()->clear_value();
  EXPECT_THAT(FindLosses(entry), ElementsAre(Replaced("zorid", "11.22 (2 values)", "0.0.0.0"),
                                             Replaced("parent", "(0 values)", "0.0.0.0")));
  entry = FullEntryMessage();
  for (int i = 0; i < 100; ++i) entry.mutable_zorid()->add_value(1);
  EXPECT_THAT(FindLosses(entry),
              ElementsAre(Replaced("zorid", "11.22.33.44.1.1.1.1... (104 values)", "0.0.0.0")));
}

TEST(Losses, AnAbsentOptionalFieldOfAnEntryComesBackWithItsDefault) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.clear_parent();
  entry.mutable_generalinfo()->clear_bridge_port_number();
  EXPECT_THAT(FindLosses(entry), ElementsAre(Defaulted("parent", "0.0.0.0"),
                                             Defaulted("generalInfo.bridge_port_number", "0")));
}

TEST(Losses, ABridgePortNumberKeepsItsLow16Bits) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_generalinfo()->set_bridge_port_number(70000);
  EXPECT_THAT(FindLosses(entry),
              ElementsAre(Narrowed("generalInfo.bridge_port_number", "70000", "4464")));
  entry.mutable_generalinfo()->set_bridge_port_number(65535);
  EXPECT_THAT(FindLosses(entry), IsEmpty());
}

TEST(Losses, UnlistedProtocolsAndBlockStatesAreReplaced) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.set_shutdownprotos(2, static_cast<pb::ProtocolType>(13));
  entry.mutable_blockinfo(0)->set_protocol(static_cast<pb::ProtocolType>(-1));
  entry.mutable_blockinfo(1)->set_state(static_cast<pb::BlockState>(2));
  EXPECT_THAT(FindLosses(entry),
              ElementsAre(Replaced("shutdownProtos[2]", "13", "PROTOCOL_UNKNOWN"),
                          Replaced("blockInfo[0].protocol", "-1", "PROTOCOL_UNKNOWN"),
                          Replaced("blockInfo[1].state", "2", "BLOCK_STATE_FORWARD")));

  EXPECT_THAT(FindLosses(IntfEntryBuilder(FullEntry())
                             .addShutdownProto(static_cast<ProtocolType>(14))
                             .addBlockInfo({static_cast<ProtocolType>(-2), BLOCK_STATE_BLOCK})
                             .addBlockInfo({PROTOCOL_UNKNOWN, static_cast<BlockState>(3)})
                             .Build()),
              ElementsAre(Replaced("shutdownProtos[3]", "14", "PROTOCOL_UNKNOWN"),
                          Replaced("blockInfo[2].protocol", "-2", "PROTOCOL_UNKNOWN"),
                          Replaced("blockInfo[3].state", "3", "BLOCK_STATE_FORWARD")));
}

TEST(Losses, AnMtuKeepsItsLow32Bits) {
  const auto entry = [](std::uint64_t mtu) {
    return IntfEntryBuilder(FullEntry())
        .addPhysicalInfo({mtu, IntfEntry::SPEED_1_GBS, IntfEntry::FULL})
        .addShutdownProto(static_cast<ProtocolType>(15))
        .Build();
  };
  EXPECT_THAT(FindLosses(entry(4294968796)),
              ElementsAre(Replaced("shutdownProtos[3]", "15", "PROTOCOL_UNKNOWN"),
                          Narrowed("physicalInfo.intf_mtu", "4294968796", "1500")));
  EXPECT_THAT(FindLosses(entry(4294967295)),
              ElementsAre(Replaced("shutdownProtos[3]", "15", "PROTOCOL_UNKNOWN")));
}

TEST(Losses, UnknownFieldsAreNamedByTheirMessageAndNumber) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_unknown_fields()->AddVarint(50, 18446744073709551615U);
  entry.mutable_unknown_fields()->AddVarint(7, 17);
  entry.mutable_unknown_fields()->AddLengthDelimited(40)->assign("a\"\\\n\xff z");
  entry.mutable_typeinfo()->mutable_unknown_fields()->AddFixed32(50, 7);
  entry.mutable_typeinfo()->mutable_interfaceflags()->mutable_unknown_fields()->AddFixed64(60, 8);
  entry.mutable_zorid()->mutable_unknown_fields()->AddGroup(50)->AddVarint(1, 9);
  entry.mutable_blockinfo(1)->mutable_unknown_fields()->AddLengthDelimited(3)->assign(100, 'x');
  EXPECT_THAT(
      FindLosses(entry),
      ElementsAre(
          Unknown("zorid.#50", "group of 1 fields"), Unknown("typeInfo.interfaceFlags.#60", "8"),
          Unknown("typeInfo.#50", "7"), Unknown("#7", "17"),
          Unknown("blockInfo[1].#3", ("\"" + std::string(64, 'x') + "\"... (100 bytes)").c_str()),
          Unknown("#40", R"("a\x22\x5c\x0a\xff z")"), Unknown("#50", "18446744073709551615")));
}

TEST(Losses, ATextOf64BytesIsShownWhole) {
  auto id = FromText<pb::Zorid>("value: [ 1, 2, 3, 4 ]");
  const std::string text(64, 'y');
  id.mutable_unknown_fields()->AddLengthDelimited(9)->assign(text);
  EXPECT_THAT(FindLosses(id), ElementsAre(Unknown("#9", ("\"" + text + "\"").c_str())));
}

TEST(Losses, AnUnknownFieldFollowsTheKnownOneOfItsNumber) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_unknown_fields()->AddVarint(3, 9);
  entry.mutable_generalinfo()->mutable_unknown_fields()->AddVarint(50, 8);
  entry.mutable_statusinfo()->mutable_unknown_fields()->AddVarint(50, 7);
  EXPECT_THAT(FindLosses(entry), ElementsAre(Unknown("generalInfo.#50", "8"), Unknown("#3", "9"),
                                             Unknown("statusInfo.#50", "7")));
}

TEST(Losses, TheMostSeriousKindComesFirst) {
  pb::IntfEntry entry = FullEntryMessage();
  entry.mutable_unknown_fields()->AddVarint(50, 1);
  entry.mutable_zorid()->set_value(0, 256);
  entry.clear_parent();
  entry.mutable_generalinfo()->set_bridge_port_number(65536);
  entry.add_shutdownprotos(static_cast<pb::ProtocolType>(99));
  EXPECT_THAT(FindLosses(entry),
              ElementsAre(Replaced("shutdownProtos[3]", "99", "PROTOCOL_UNKNOWN"),
                          Narrowed("zorid", "256.22.33.44", "0.22.33.44"),
                          Narrowed("generalInfo.bridge_port_number", "65536", "0"),
                          Unknown("#50", "1"), Defaulted("parent", "0.0.0.0")));
}

// State signals.

TEST(Losses, OfTwoElementsForOneInterfaceTheEarlierIsLost) {
  EXPECT_THAT(LossesOfText<pb::ShutStateSync>(R"pb(
                shutProtocol: STP
                intfs {
                  zorid { value: [ 0, 0, 0, 7 ] }
                  state: true
                }
                intfs {
                  zorid { value: [ 0, 0, 0, 263 ] }
                  state: false
                }
                intfs {
                  zorid { value: [ 0, 0, 0, 7 ] }
                  state: true
                }
                intfs {
                  zorid { value: [ 0, 0, 0, 8 ] }
                  state: true
                })pb"),
              ElementsAre(Replaced("intfs[0]", "0.0.0.7", "intfs[2]"),
                          Replaced("intfs[1]", "0.0.0.7", "intfs[2]")));
}

TEST(Losses, ElementsThatDoNotAscendLoseTheirOrder) {
  EXPECT_THAT(LossesOfText<pb::BlockStateSync>(R"pb(
                blockProtocol: STP
                intfs {
                  zorid { value: [ 0, 0, 1, 0 ] }
                  state: BLOCK_STATE_BLOCK
                }
                intfs {
                  zorid { value: [ 0, 0, 0, 255 ] }
                  state: BLOCK_STATE_BLOCK
                }
                intfs {
                  zorid { value: [ 0, 0, 1, 0 ] }
                  state: BLOCK_STATE_FORWARD
                }
                intfs {
                  zorid { value: [ 0, 0, 0, 254 ] }
                  state: BLOCK_STATE_FORWARD
                })pb"),
              ElementsAre(Replaced("intfs", "not ascending", "ascending"),
                          Replaced("intfs[0]", "0.0.1.0", "intfs[2]")));
  // The elements ascend without the earlier one, so only this one is lost.
  EXPECT_THAT(LossesOfText<pb::BlockStateSync>(R"pb(
                blockProtocol: STP
                intfs {
                  zorid { value: [ 0, 0, 1, 0 ] }
                  state: BLOCK_STATE_BLOCK
                }
                intfs {
                  zorid { value: [ 0, 0, 0, 255 ] }
                  state: BLOCK_STATE_BLOCK
                }
                intfs {
                  zorid { value: [ 0, 0, 1, 0 ] }
                  state: BLOCK_STATE_FORWARD
                })pb"),
              ElementsAre(Replaced("intfs[0]", "0.0.1.0", "intfs[2]")));
}

TEST(Losses, AnElementOfASignalLosesWhatItsPartsLose) {
  pb::BlockStateSync signal = FromText<pb::BlockStateSync>(R"pb(
    blockProtocol: STP
    intfs {
      zorid { value: [ 0, 0, 0, 1 ] }
      state: BLOCK_STATE_BLOCK
    }
    intfs {
      zorid { value: [ 0, 0, 1, 300 ] }
      state: BLOCK_STATE_BLOCK
    })pb");
  signal.mutable_intfs(0)->set_state(static_cast<pb::BlockState>(-7));
  signal.mutable_intfs(1)->mutable_unknown_fields()->AddVarint(50, 5);
  EXPECT_THAT(FindLosses(signal),
              ElementsAre(Replaced("intfs[0].state", "-7", "BLOCK_STATE_FORWARD"),
                          Narrowed("intfs[1].zorid", "0.0.1.300", "0.0.1.44"),
                          Unknown("intfs[1].#50", "5")));
}

TEST(Losses, ASignalRecordLosesUnlistedBlockStates) {
  BlockStateInfoSyncSignal block;
  block.blockStates = {{{{1, 1, 1, 1}}, BLOCK_STATE_BLOCK},
                       {{{2, 2, 2, 2}}, static_cast<BlockState>(7)}};
  EXPECT_THAT(FindLosses(block),
              ElementsAre(Replaced("intfs[1].state", "7", "BLOCK_STATE_FORWARD")));
  block.protocol = L1_PROTO;
  EXPECT_THAT(FindLosses(block), IsEmpty());
  EXPECT_THAT(FindLosses(ShutStateInfoSyncSignal{{{{{4, 3, 2, 1}}, true}}, STP}), IsEmpty());
}

// Registrations.

constexpr char kClient[] = R"pb(
  clientAddress: 5
  protocolType: L1_PROTO
  intfCategory { L1: true L2: false VP: true L2_SUB_IF: false VIRTUAL_IF: true }
  token: "t"
)pb";

TEST(Losses, ARegistrationLosesItsUnlistedProtocol) {
  auto client = FromText<pb::InformationClient>(kClient);
  EXPECT_THAT(FindLosses(client), IsEmpty());
  client.set_protocoltype(static_cast<pb::ProtocolType>(77));
  client.mutable_intfcategory()->mutable_unknown_fields()->AddVarint(6, 1);
  EXPECT_THAT(FindLosses(client), ElementsAre(Replaced("protocolType", "77", "PROTOCOL_UNKNOWN"),
                                              Unknown("intfCategory.#6", "1")));
}

TEST(Losses, ARegistrationRecordLosesItsUnlistedProtocolAndCategories) {
  ZORL2InfoClientConfig record;
  record.protocolType = static_cast<ProtocolType>(78);
  record.interfaceCategories = {static_cast<InterfaceCategory>(-9), L2,
                                static_cast<InterfaceCategory>(5)};
  EXPECT_THAT(FindLosses(record),
              ElementsAre(Replaced("protocolType", "78", "PROTOCOL_UNKNOWN"),
                          Replaced("intfCategory", "-9", ""), Replaced("intfCategory", "5", "")));
}

// Member operations.

TEST(Losses, AbsentScalarsOfAMemberOperationAreDefaults) {
  EXPECT_THAT(LossesOfText<pb::LagMemberOperationProto>(
                  "lag { value: [ 1, 2, 3, 4 ] } member { value: [ 5, 6, 7, 264 ] }"),
              ElementsAre(Narrowed("member", "5.6.7.264", "5.6.7.8"), Defaulted("token", "0"),
                          Defaulted("collecting", "false"), Defaulted("distributing", "false")));
}

TEST(Losses, AMemberOperationRecordLosesTheManagersData) {
  LagMemberOperation record{{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 9, 0, true, true};
  EXPECT_THAT(FindLosses(record), IsEmpty());
  record.managerData = 10;
  EXPECT_THAT(FindLosses(record),
              ElementsAre(Loss{LossKind::kDefaulted, "managerData", "10", "0"}));
}

// Messages that hold such messages, and messages without a native record.

TEST(Losses, TheLossesOfAListAreInOneOrder) {
  pb::IntfEntryList list;
  *list.mutable_infoclient() = FromText<pb::InformationClient>(kClient);
  list.mutable_infoclient()->mutable_unknown_fields()->AddVarint(50, 1);
  list.mutable_unknown_fields()->AddVarint(51, 2);
  *list.add_intfentry() = FullEntryMessage();
  *list.add_intfentry() = FullEntryMessage();
  list.mutable_intfentry(0)->clear_parent();
  list.mutable_intfentry(1)->mutable_zorid()->add_value(5);
  EXPECT_THAT(FindLosses(list),
              ElementsAre(Replaced("intfEntry[1].zorid", "11.22.33.44.5 (5 values)", "0.0.0.0"),
                          Unknown("infoClient.#50", "1"), Unknown("#51", "2"),
                          Defaulted("intfEntry[0].parent", "0.0.0.0")));
  list.mutable_intfentry(1)->clear_intfcategory();
  EXPECT_THAT(FindLosses(list), IsEmpty());
}

TEST(Losses, AMessageWithoutANativeRecordLosesNothing) {
  auto config = FromText<pb::HoldTimeConfig>("configs { zorid { value: 300 } down_ms: 1 }");
  config.mutable_unknown_fields()->AddVarint(50, 1);
  config.mutable_configs(0)->mutable_unknown_fields()->AddVarint(50, 1);
  EXPECT_THAT(FindLosses(config), IsEmpty());
  EXPECT_THAT(LossesOfText<pb::VirtualInterfaceOperation>("virtualInterface { value: 300 }"),
              IsEmpty());
}

}  // namespace
