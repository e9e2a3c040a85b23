// Memory runs out at every allocation in turn: std::bad_alloc leaves, the destination holds what
// is promised, nothing is lost, and the same objects can be used again.
#include <gtest/gtest.h>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/reliability/exhaust.h"
#include "tests/reliability/native_text.h"
#include "tests/reliability/wire.h"

namespace pb = zorl2::protobuf;

namespace {

// Too long to be kept inside a string object.
std::string Long(const char* text) { return std::string(text) + std::string(40, '.'); }

oracle::EntryRecord Record() {
  oracle::EntryRecord r;
  r.id = zorid_t{{1, 2, 3, 4}};
  r.parent = zorid_t{{5, 6, 7, 8}};
  r.generalInfo = {Long("name"), Long("address"), 9, Long("group"), 10};
  r.statusInfo = {
      IntfEntry::IF_ADMIN_DOWN, IntfEntry::UP, IntfEntry::LINK_DOWN, 11, true, false, true};
  r.physicalInfo = {1500, IntfEntry::SPEED_40_GBS, IntfEntry::FULL};
  r.typeInfo = {IntfEntry::ETHERNET, {true, false, true, false, true, true}, IntfEntry::S_VLAN};
  r.interfaceCategory = VP;
  r.shutdownProtos = {STP, STP, L1_PROTO, LACP};
  r.blockInfo = {{ERPS, BLOCK_STATE_BLOCK}, {LBD, BLOCK_STATE_FORWARD}, {CFM, BLOCK_STATE_BLOCK}};
  return r;
}

oracle::EntryRecord OtherRecord() {
  oracle::EntryRecord r;
  r.id = zorid_t{{9, 9, 9, 9}};
  r.generalInfo = {Long("old name"), Long("old address"), 90, Long("old group"), 91};
  r.shutdownProtos = {EFM};
  r.blockInfo = {{LFD, BLOCK_STATE_BLOCK}, {LLDP, BLOCK_STATE_BLOCK}};
  return r;
}

template <typename Message, typename Model, typename Native>
Message MessageOf(const Native& native) {
  Model model;
  oracle::ToMessage(native, model);
  Message message;
  proof::Fill(model, message);
  return message;
}

// Native to message: whatever is present is right, and the whole comes with memory. A message that
// was used before, with lists of twice the length and a field that nobody knows, keeps nothing of
// it. Returns how many allocations a fresh message takes.
template <typename Converter, typename Message, typename Native>
long ExhaustToMessage(const Native& native, const Message& whole) {
  const std::string bytes = whole.SerializeAsString();
  const auto exhaust = [&](const Message& before) {
    return proof::Exhaust(
        [&] { return before; },
        [&](Message& message) { EXPECT_TRUE(Converter().Convert(native, message)); },
        [&](const Message& message, bool failed) {
          EXPECT_TRUE(proof::IsPartOf(message, whole)) << message.ShortDebugString();
          EXPECT_TRUE(message.GetReflection()->GetUnknownFields(message).empty());
          if (!failed) {
            EXPECT_EQ(message.SerializeAsString(), bytes);
          }
        });
  };
  Message used = whole;
  used.MergeFrom(whole);
  used.GetReflection()->MutableUnknownFields(&used)->AddVarint(1000, 5);
  exhaust(used);
  return exhaust(Message());
}

TEST(Exhaustion, IdentifierToMessageLeavesTheMessageCleared) {
  const zorid_t id{{1, 2, 3, 4}};
  EXPECT_EQ(proof::Exhaust([] { return pb::Zorid(); },
                           [&](pb::Zorid& message) { ZORIDConverter().Convert(id, message); },
                           [](const pb::Zorid& message, bool failed) {
                             EXPECT_EQ(message.value_size(), failed ? 0 : 4);
                           }),
            1);
}

TEST(Exhaustion, IdentifierToNativeAllocatesNothing) {
  const auto message = MessageOf<pb::Zorid, oracle::Zorid>(zorid_t{{1, 2, 3, 4}});
  EXPECT_EQ(proof::Exhaust([] { return zorid_t{}; },
                           [&](zorid_t& id) { ZORIDConverter().Convert(message, id); },
                           [](const zorid_t& id, bool) {
                             EXPECT_EQ(id, (zorid_t{{1, 2, 3, 4}}));
                           }),
            0);
}

// Every allocation fails once. Returns how many the conversion into `held` makes.
long EntryToNative(const oracle::EntryRecord& held) {
  const auto message = MessageOf<pb::IntfEntry, oracle::Entry>(Record());
  const std::string before = proof::Text(held);
  const std::string after = proof::Text(Record());
  return proof::Exhaust(
      [&] { return proof::Build(held); },
      [&](IntfEntry& entry) { EXPECT_TRUE(IntfEntryConverter().Convert(message, entry)); },
      [&](const IntfEntry& entry, bool failed) {
        EXPECT_EQ(proof::Text(entry), failed ? before : after);
      });
}

TEST(Exhaustion, EntryToNativeLeavesTheEntryUnchanged) {
  // Three strings, four shutdown protocols, three block entries.
  EXPECT_EQ(EntryToNative({}), 3 + 4 + 3);
  // A used record needs what it lacks: its strings are long enough, three and one nodes are
  // missing.
  EXPECT_EQ(EntryToNative(OtherRecord()), 3 + 1);
  oracle::EntryRecord short_strings = OtherRecord();
  short_strings.generalInfo = {"short name", "short address", 92, "short group", 93};
  EXPECT_EQ(EntryToNative(short_strings), 3 + 3 + 1);
  oracle::EntryRecord longer_lists = OtherRecord();
  longer_lists.shutdownProtos.assign(7, CFM);
  longer_lists.blockInfo.assign(5, {STP, BLOCK_STATE_BLOCK});
  EXPECT_EQ(EntryToNative(longer_lists), 0);
}

TEST(Exhaustion, EntryToMessageKeepsWhatWasSet) {
  const IntfEntry entry = proof::Build(Record());
  const auto whole = MessageOf<pb::IntfEntry, oracle::Entry>(Record());
  EXPECT_GE(ExhaustToMessage<IntfEntryConverter>(entry, whole), 15);
}

TEST(Exhaustion, SignalsToNativeKeepOldStatesAndAddOnlyNewOnes) {
  ShutStateInfoSyncSignal signal;
  signal.protocol = ERPS;
  for (std::uint8_t i = 0; i < 6; ++i) signal.shutStates[zorid_t{{i, 1, 2, 3}}] = i % 2 == 0;
  auto message = MessageOf<pb::ShutStateSync, oracle::Signal>(signal);
  // Ascending at first; those behind the swapped element are looked up from the top.
  message.mutable_intfs()->SwapElements(2, 5);
  const zorid_t old{{200, 0, 0, 1}};
  EXPECT_EQ(proof::Exhaust(
                [&] {
                  ShutStateInfoSyncSignal before;
                  before.shutStates[old] = true;
                  return before;
                },
                [&](ShutStateInfoSyncSignal& s) { ShutStateConverter().Convert(message, s); },
                [&](const ShutStateInfoSyncSignal& s, bool failed) {
                  EXPECT_EQ(s.protocol, ERPS);
                  EXPECT_TRUE(s.shutStates.at(old));
                  EXPECT_TRUE(failed || s.shutStates.size() == 7);
                  for (const auto& [id, state] : s.shutStates) {
                    if (id != old) {
                      EXPECT_EQ(state, signal.shutStates.at(id));
                    }
                  }
                }),
            6);
}

TEST(Exhaustion, BlockingSignalToNativeKeepsOldStatesAndAddsOnlyNewOnes) {
  BlockStateInfoSyncSignal signal;
  signal.protocol = LACP;
  for (std::uint8_t i = 0; i < 6; ++i) {
    signal.blockStates[zorid_t{{i, 1, 2, 3}}] =
        i % 2 == 0 ? BLOCK_STATE_BLOCK : BLOCK_STATE_FORWARD;
  }
  auto message = MessageOf<pb::BlockStateSync, oracle::Signal>(signal);
  // Ascending at first; those behind the swapped element are looked up from the top.
  message.mutable_intfs()->SwapElements(2, 5);
  const zorid_t old{{200, 0, 0, 1}};
  EXPECT_EQ(proof::Exhaust(
                [&] {
                  BlockStateInfoSyncSignal before;
                  before.blockStates[old] = BLOCK_STATE_BLOCK;
                  return before;
                },
                [&](BlockStateInfoSyncSignal& s) { BlockStateConverter().Convert(message, s); },
                [&](const BlockStateInfoSyncSignal& s, bool failed) {
                  EXPECT_EQ(s.protocol, LACP);
                  EXPECT_EQ(s.blockStates.at(old), BLOCK_STATE_BLOCK);
                  EXPECT_TRUE(failed || s.blockStates.size() == 7);
                  for (const auto& [id, state] : s.blockStates) {
                    if (id != old) {
                      EXPECT_EQ(state, signal.blockStates.at(id));
                    }
                  }
                }),
            6);
}

TEST(Exhaustion, SignalsToMessageKeepWhatWasSet) {
  ShutStateInfoSyncSignal shut;
  shut.protocol = ERPS;
  BlockStateInfoSyncSignal block;
  block.protocol = BACKUPLINK;
  for (std::uint8_t i = 0; i < 6; ++i) {
    shut.shutStates[zorid_t{{i, 1, 2, 3}}] = i % 2 == 0;
    block.blockStates[zorid_t{{i, 3, 2, 1}}] = BLOCK_STATE_BLOCK;
  }
  EXPECT_GE(ExhaustToMessage<ShutStateConverter>(
                shut, MessageOf<pb::ShutStateSync, oracle::Signal>(shut)),
            6);
  EXPECT_GE(ExhaustToMessage<BlockStateConverter>(
                block, MessageOf<pb::BlockStateSync, oracle::Signal>(block)),
            6);
}

template <typename Converter, typename Message, typename Signal>
void ExpectWithoutRoom(const Signal& signal, const Message& expected) {
  Message message;
  proof::FailAllocation(1);
  EXPECT_THROW(Converter().Convert(signal, message), std::bad_alloc);
  proof::StopFailing();
  EXPECT_EQ(message.SerializePartialAsString(), expected.SerializePartialAsString());
}

TEST(Exhaustion, SignalsToMessageSetTheProtocolBeforeTheyMakeRoom) {
  ShutStateInfoSyncSignal shut;
  shut.protocol = ERPS;
  shut.shutStates[zorid_t{{1, 2, 3, 4}}] = true;
  pb::ShutStateSync onlyErps;
  onlyErps.set_shutprotocol(pb::ERPS);
  ExpectWithoutRoom<ShutStateConverter>(shut, onlyErps);
  BlockStateInfoSyncSignal block;
  block.protocol = CFM;
  block.blockStates[zorid_t{{1, 2, 3, 4}}] = BLOCK_STATE_BLOCK;
  pb::BlockStateSync onlyCfm;
  onlyCfm.set_blockprotocol(pb::CFM);
  ExpectWithoutRoom<BlockStateConverter>(block, onlyCfm);
}

TEST(Exhaustion, RegistrationToNativeKeepsWhatWasWritten) {
  ZORL2InfoClientConfig whole;
  whole.protocolType = CFM;
  whole.interfaceCategories = {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF};
  whole.clientAddress = 0x0102030405060708;
  whole.token = Long("new token");
  const auto message = MessageOf<pb::InformationClient, oracle::Client>(whole);
  EXPECT_EQ(proof::Exhaust(
                [] {
                  ZORL2InfoClientConfig before;
                  before.token = "old";
                  before.interfaceCategories = {VP};
                  return before;
                },
                [&](ZORL2InfoClientConfig& config) {
                  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(message, config));
                },
                [&](const ZORL2InfoClientConfig& config, bool failed) {
                  EXPECT_EQ(config.clientAddress, whole.clientAddress);
                  EXPECT_EQ(config.protocolType, CFM);
                  EXPECT_EQ(config.interfaceCategories.count(VP), 1U);
                  EXPECT_EQ(config.token, failed ? "old" : whole.token);
                  if (!failed) {
                    EXPECT_EQ(config.interfaceCategories, whole.interfaceCategories);
                  }
                }),
            4 + 1);
}

TEST(Exhaustion, RegistrationToMessageKeepsWhatWasSet) {
  ZORL2InfoClientConfig config;
  config.interfaceCategories = {L1, VP};
  config.token = Long("token");
  EXPECT_GE(ExhaustToMessage<ZORL2InfoClientConfigConverter>(
                config, MessageOf<pb::InformationClient, oracle::Client>(config)),
            3);
}

TEST(Exhaustion, AggregationOperationToMessageKeepsWhatWasSet) {
  const LagMemberOperation operation{{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 9, 10, true, true};
  EXPECT_EQ(ExhaustToMessage<LagMemberConverter>(
                operation, MessageOf<pb::LagMemberOperationProto, oracle::Lag>(operation)),
            4);
}

TEST(Exhaustion, AggregationOperationToNativeAllocatesNothing) {
  const LagMemberOperation operation{{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 9, 0, true, false};
  const auto message = MessageOf<pb::LagMemberOperationProto, oracle::Lag>(operation);
  EXPECT_EQ(proof::Exhaust([] { return LagMemberOperation(); },
                           [&](LagMemberOperation& o) { LagMemberConverter().Convert(message, o); },
                           [&](const LagMemberOperation& o, bool) {
                             EXPECT_EQ(proof::Text(o), proof::Text(operation));
                           }),
            0);
}

}  // namespace
