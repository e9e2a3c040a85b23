// Every allocation of every operation fails once: std::bad_alloc leaves the call, the destination
// holds what docs/behaviour.md promises, nothing leaks, and the same objects can be used again.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "native/intf_entry_builder.h"
#include "tests/differential/compare.h"
#include "tests/differential/part_converters.h"
#include "tests/support/allocations.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

using zorl2_test::Text;

namespace {

constexpr long kSuccess = -1;

// Makes each allocation of an operation fail once. fresh() makes the destination and
// operate(destination) runs the operation. check(destination, granted) compares what the
// destination then holds, after a failure that followed `granted` allocations or after kSuccess.
// After each failure the operation must succeed on the same destination. Returns the number of
// allocations of the operation.
template <typename Fresh, typename Operate, typename Check>
long Exhaust(const Fresh& fresh, const Operate& operate, const Check& check) {
  {
    // Makes the allocations of a first call, which are kept and are no leak.
    auto destination = fresh();
    operate(destination);
  }
  for (long granted = 0;; ++granted) {
    SCOPED_TRACE("granted: " + std::to_string(granted));
    const long live = zorl2_test::allocations.live;
    bool failed = false;
    {
      auto destination = fresh();
      try {
        const zorl2_test::Failing failing(granted, 1);
        operate(destination);
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      check(destination, failed ? granted : kSuccess);
      if (failed) {
        operate(destination);
        check(destination, kSuccess);
      }
    }
    EXPECT_EQ(zorl2_test::allocations.live, live) << "leak";
    if (!failed || testing::Test::HasFailure()) return granted;
  }
}

// One operation. run() calls Exhaust() and returns the number of allocations.
struct Case {
  std::string name;
  long least;  // With fewer allocations the test would prove nothing.
  std::function<long()> run;

  friend std::ostream& operator<<(std::ostream& out, const Case& c) { return out << c.name; }
};

class Exhaustion : public testing::TestWithParam<Case> {};

TEST_P(Exhaustion, TheDestinationHoldsWhatIsPromised) {
  EXPECT_GE(GetParam().run(), GetParam().least);
}

std::string Name(const testing::TestParamInfo<Case>& info) { return info.param.name; }

// Too long to be stored inside a string object.
std::string Long(const char* text) { return std::string(text) + std::string(40, '.'); }

oracle::EntryRecord Entry() {
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

oracle::EntryRecord UsedEntry() {
  oracle::EntryRecord r;
  r.id = zorid_t{{9, 9, 9, 9}};
  r.generalInfo = {Long("old name"), Long("old address"), 90, Long("old group"), 91};
  r.shutdownProtos = {EFM};
  r.blockInfo = {{LFD, BLOCK_STATE_BLOCK}, {LLDP, BLOCK_STATE_BLOCK}};
  return r;
}

template <typename Signal, typename State>
Signal SixInterfaces(State on, State off) {
  Signal signal;
  signal.protocol = ERPS;
  for (std::uint8_t i = 0; i < 6; ++i) {
    auto& [states, protocol] = signal;
    states[zorid_t{{i, 1, 2, 3}}] = i % 2 == 0 ? on : off;
  }
  return signal;
}
ShutStateInfoSyncSignal Shut() { return SixInterfaces<ShutStateInfoSyncSignal>(true, false); }
BlockStateInfoSyncSignal Block() {
  return SixInterfaces<BlockStateInfoSyncSignal>(BLOCK_STATE_BLOCK, BLOCK_STATE_FORWARD);
}

ZORL2InfoClientConfig Client() {
  return {CFM, {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF}, 0x0102030405060708, Long("token")};
}

LagMemberOperation Lag() { return {{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 9, 0, true, false}; }

// The message that the oracle makes of the record.
template <typename Message, typename Record>
Message MessageOf(const Record& record) {
  decltype(proof::Read(Message())) model;
  oracle::ToMessage(record, model);
  Message message;
  proof::Fill(model, message);
  return message;
}

// Whether the part has only fields of the whole. A text whose allocation failed may be present and
// empty.
bool IsPartOf(const google::protobuf::Message& part, const google::protobuf::Message& whole) {
  std::istringstream lines(zorl2_test::MessageDifference(part, whole));
  for (std::string line; std::getline(lines, line);) {
    const bool absent = line.rfind("added: ", 0) == 0;
    const bool empty = line.find(": \"\" -> ") != std::string::npos;
    if (!absent && !empty) return false;
  }
  return true;
}

// Native to message: the fields that were set before the failure remain set, so the message grows
// with the number of allocations.
template <typename Converter, typename Message, typename Record>
Case ToMessage(const std::string& name, long least, const Record& record, const Message& before) {
  return {name, least, [=] {
            const auto native = proof::Native(record);
            const auto whole = MessageOf<Message>(record);
            std::size_t size = 0;
            const long allocations = Exhaust(
                [&] { return before; },
                [&](Message& message) { EXPECT_TRUE(Converter().Convert(native, message)); },
                [&](const Message& message, long granted) {
                  EXPECT_TRUE(IsPartOf(message, whole)) << message.ShortDebugString();
                  if (granted == kSuccess) {
                    EXPECT_EQ(zorl2_test::MessageDifference(whole, message), "");
                    return;
                  }
                  EXPECT_GE(message.ByteSizeLong(), size);
                  size = message.ByteSizeLong();
                });
            if (allocations > 1) {
              EXPECT_GT(size, 0U) << "cleared after the failure";
            }
            return allocations;
          }};
}

// Adds conversions into a fresh message, into that of a default record, and into one with fields
// that the conversion does not write.
template <typename Converter, typename Message, typename Record>
void AddToMessage(std::vector<Case>& cases, const std::string& name, long least,
                  const Record& record) {
  cases.push_back(ToMessage<Converter>(name + "ToFreshMessage", least, record, Message()));
  cases.push_back(
      ToMessage<Converter>(name + "ToDefaultMessage", 0, record, MessageOf<Message>(Record{})));
  Message used = MessageOf<Message>(record);
  used.MergeFrom(MessageOf<Message>(record));
  used.GetReflection()->MutableUnknownFields(&used)->AddVarint(1000, 5);
  cases.push_back(ToMessage<Converter>(name + "ToUsedMessage", 0, record, used));
}

std::vector<Case> ToMessageCases() {
  std::vector<Case> cases;
  AddToMessage<ZORIDConverter, pb::Zorid>(cases, "Identifier", 1, zorid_t{{1, 2, 3, 4}});
  AddToMessage<IntfEntryConverter, pb::IntfEntry>(cases, "Entry", 15, Entry());
  AddToMessage<ShutStateConverter, pb::ShutStateSync>(cases, "Shut", 6, Shut());
  AddToMessage<BlockStateConverter, pb::BlockStateSync>(cases, "Block", 6, Block());
  AddToMessage<ZORL2InfoClientConfigConverter, pb::InformationClient>(cases, "Client", 2, Client());
  AddToMessage<LagMemberConverter, pb::LagMemberOperationProto>(cases, "Lag", 4, Lag());
  // The other four parts of an entry allocate nothing.
  const IntfEntry::GeneralInfo general = Entry().generalInfo;
  const IntfEntry::TypeInfo type = Entry().typeInfo;
  cases.push_back(ToMessage<proof::GeneralConverter>("GeneralInfoToFreshMessage", 3, general,
                                                     pb::GeneralInfo()));
  auto used = MessageOf<pb::GeneralInfo>(general);
  used.set_intf_name("");
  used.set_phy_addr("");
  used.set_redundancy_group_phy_addr("");
  cases.push_back(ToMessage<proof::GeneralConverter>("GeneralInfoToUsedMessage", 3, general, used));
  cases.push_back(
      ToMessage<proof::TypeConverter>("TypeInfoToFreshMessage", 1, type, pb::TypeInfo()));
  return cases;
}
INSTANTIATE_TEST_SUITE_P(NativeToMessage, Exhaustion, testing::ValuesIn(ToMessageCases()), Name);

// The text of the record after a failure.
template <typename Record>
using TextAfterFailure = std::function<std::string(const Record& held, long granted)>;

// Message to native: after success the record equals the oracle's result, after a failure the text
// that `after` returns.
template <typename Converter, typename Message, typename Record>
Case ToNative(const std::string& name, long allocations, const Message& message, const Record& held,
              const TextAfterFailure<Record>& after) {
  return {name, allocations, [=] {
            Record whole = held;
            oracle::ToNative(proof::Read(message), whole);
            const auto before = proof::Native(held);
            const long made =
                Exhaust([&] { return before; },
                        [&](auto& record) { EXPECT_TRUE(Converter().Convert(message, record)); },
                        [&](const auto& record, long granted) {
                          EXPECT_EQ(Text(record), granted == kSuccess ? proof::Text(whole)
                                                                      : after(held, granted));
                        });
            EXPECT_EQ(made, allocations);
            return made;
          }};
}

template <typename Record>
std::string Unchanged(const Record& held, long) {
  return proof::Text(held);
}

// The protocol and the elements before the failure are merged: each allocates one node.
template <typename Message, typename Signal>
TextAfterFailure<Signal> MergedBefore(const Message& message) {
  return [message](const Signal& held, long granted) {
    oracle::Signal model = proof::Read(message);
    model.intfs.resize(static_cast<std::size_t>(granted));
    Signal expected = held;
    oracle::ToNative(model, expected);
    oracle::TakeNotes();  // They are allocated.
    return Text(expected);
  };
}

template <typename Converter, typename Message, typename Signal>
void AddSignal(std::vector<Case>& cases, const std::string& name, const Signal& source,
               const Signal& used) {
  auto message = MessageOf<Message>(source);
  // Not in the order of the map.
  message.mutable_intfs()->SwapElements(2, 5);
  const auto after = MergedBefore<Message, Signal>(message);
  cases.push_back(ToNative<Converter>(name + "ToFreshRecord", 6, message, Signal{}, after));
  cases.push_back(ToNative<Converter>(name + "ToUsedRecord", 6, message, used, after));
}

std::vector<Case> ToNativeCases() {
  std::vector<Case> cases;
  cases.push_back(ToNative<ZORIDConverter>(
      "IdentifierToRecord", 0, MessageOf<pb::Zorid>(zorid_t{{1, 2, 3, 4}}), zorid_t{{9, 9, 9, 9}},
      TextAfterFailure<zorid_t>(Unchanged<zorid_t>)));
  const auto entry = MessageOf<pb::IntfEntry>(Entry());
  const auto add_entry = [&](const char* name, long allocations, const oracle::EntryRecord& held) {
    cases.push_back(ToNative<IntfEntryConverter>(
        name, allocations, entry, held,
        TextAfterFailure<oracle::EntryRecord>(Unchanged<oracle::EntryRecord>)));
  };
  // Three strings, four shutdown protocols, three block entries; less what a used record has.
  add_entry("EntryToFreshRecord", 3 + 4 + 3, {});
  add_entry("EntryToUsedRecord", 0 + 3 + 1, UsedEntry());
  oracle::EntryRecord held = UsedEntry();
  held.generalInfo = {"short name", "short address", 92, "short group", 93};
  add_entry("EntryToRecordWithShortStrings", 3 + 3 + 1, held);
  held = UsedEntry();
  held.shutdownProtos.assign(7, CFM);
  held.blockInfo.assign(5, {STP, BLOCK_STATE_BLOCK});
  add_entry("EntryToRecordWithLongerLists", 0, held);

  const zorid_t other{{200, 0, 0, 1}};
  AddSignal<ShutStateConverter, pb::ShutStateSync>(cases, "Shut", Shut(),
                                                   ShutStateInfoSyncSignal{{{other, true}}, STP});
  AddSignal<BlockStateConverter, pb::BlockStateSync>(
      cases, "Block", Block(), BlockStateInfoSyncSignal{{{other, BLOCK_STATE_BLOCK}}, STP});

  // What was written before the failure remains: the categories in their order, then the token.
  const auto client_after = [](const ZORL2InfoClientConfig& before, long granted) {
    ZORL2InfoClientConfig expected = Client();
    expected.token = before.token;
    expected.interfaceCategories = before.interfaceCategories;
    for (const InterfaceCategory category : {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF}) {
      if (granted == 0) break;
      if (expected.interfaceCategories.insert(category).second) --granted;
    }
    return Text(expected);
  };
  const auto client = MessageOf<pb::InformationClient>(Client());
  cases.push_back(ToNative<ZORL2InfoClientConfigConverter>(
      "ClientToFreshRecord", 5 + 1, client, ZORL2InfoClientConfig{},
      TextAfterFailure<ZORL2InfoClientConfig>(client_after)));
  cases.push_back(ToNative<ZORL2InfoClientConfigConverter>(
      "ClientToUsedRecord", 4 + 1, client, ZORL2InfoClientConfig{STP, {VP}, 1, "old"},
      TextAfterFailure<ZORL2InfoClientConfig>(client_after)));
  cases.push_back(ToNative<LagMemberConverter>(
      "LagToRecord", 0, MessageOf<pb::LagMemberOperationProto>(Lag()), LagMemberOperation{},
      TextAfterFailure<LagMemberOperation>(Unchanged<LagMemberOperation>)));

  // The members before the failing string are written. The other parts allocate nothing.
  const auto general_after = [](const IntfEntry::GeneralInfo& before, long granted) {
    IntfEntry::GeneralInfo expected = before;
    if (granted > 0) expected.intf_name = Entry().generalInfo.intf_name;
    if (granted > 1) {
      expected.phy_addr = Entry().generalInfo.phy_addr;
      expected.bridge_port_number = Entry().generalInfo.bridge_port_number;
      expected.redundancy_group_id = Entry().generalInfo.redundancy_group_id;
    }
    return Text(expected);
  };
  cases.push_back(ToNative<proof::GeneralConverter>(
      "GeneralInfoToRecord", 3, MessageOf<pb::GeneralInfo>(Entry().generalInfo),
      IntfEntry::GeneralInfo{"a", "b", 3, "c", 4},
      TextAfterFailure<IntfEntry::GeneralInfo>(general_after)));
  return cases;
}
INSTANTIATE_TEST_SUITE_P(MessageToNative, Exhaustion, testing::ValuesIn(ToNativeCases()), Name);

// An operation of a builder that holds `start`; `after` is the entry that it holds after a failure.
Case OfBuilder(const std::string& name, long allocations, const oracle::EntryRecord& start,
               const std::function<void(IntfEntryBuilder&)>& operate,
               const std::function<void(oracle::EntryRecord&)>& expected,
               const std::function<void(oracle::EntryRecord&, long)>& after) {
  return {name, allocations, [=] {
            const long made =
                Exhaust([&] { return IntfEntryBuilder(proof::Build(start)); }, operate,
                        [&](IntfEntryBuilder& builder, long granted) {
                          oracle::EntryRecord entry = start;
                          if (granted == kSuccess) {
                            expected(entry);
                          } else {
                            after(entry, granted);
                          }
                          EXPECT_EQ(Text(builder.Build()), proof::Text(entry));
                        });
            EXPECT_EQ(made, allocations);
            return made;
          }};
}

std::vector<Case> BuilderCases() {
  using Builder = IntfEntryBuilder;
  using Record = oracle::EntryRecord;
  const IntfEntry::GeneralInfo general = Entry().generalInfo;
  const auto nothing = [](Record&, long) {};
  Record start;
  start.generalInfo = {"a", "b", 3, "c", 4};
  start.shutdownProtos = {STP};
  start.blockInfo = {{ERPS, BLOCK_STATE_BLOCK}};
  return {OfBuilder(
              "AddShutdownProto", 1, start, [](Builder& b) { b.addShutdownProto(LACP); },
              [](Record& r) { r.shutdownProtos.push_back(LACP); }, nothing),
          OfBuilder(
              "AddBlockInfo", 1, start,
              [](Builder& b) {
                b.addBlockInfo({LBD, BLOCK_STATE_FORWARD});
              },
              [](Record& r) {
                r.blockInfo.push_back({LBD, BLOCK_STATE_FORWARD});
              },
              nothing),
          OfBuilder(
              "AddGeneralInfo", 3, start, [=](Builder& b) { b.addGeneralInfo(general); },
              [=](Record& r) { r.generalInfo = general; },
              // The strings before the failing one are assigned.
              [=](Record& r, long granted) {
                if (granted > 0) r.generalInfo.intf_name = general.intf_name;
                if (granted > 1) {
                  r.generalInfo.phy_addr = general.phy_addr;
                  r.generalInfo.redundancy_group_id = general.redundancy_group_id;
                }
              }),
          OfBuilder(
              "Build", 3 + 4 + 3, Entry(), [](Builder& b) { b.Build(); }, [](Record&) {}, nothing),
          OfBuilder(
              "OtherOperations", 0, Entry(),
              [](Builder& b) {
                b.addZorId({}).addParent({}).addStatusInfo({}).addPhysicalInfo({}).addTypeInfo({});
                b.setInterfaceCategory(L1);
                // Starting from an entry.
                Builder moved(std::move(b));
                b = std::move(moved);
              },
              [](Record& r) {
                r.id = r.parent = {};
                r.statusInfo = {};
                r.physicalInfo = {};
                r.typeInfo = {};
                r.interfaceCategory = L1;
              },
              nothing)};
}
INSTANTIATE_TEST_SUITE_P(Builder, Exhaustion, testing::ValuesIn(BuilderCases()), Name);

TEST(Allocations, ABuilderStartsFromAnEntryWithoutAllocation) {
  IntfEntry start = proof::Build(Entry());
  EXPECT_EQ(zorl2_test::AllocationsOf([&] { IntfEntryBuilder builder(std::move(start)); }), 0);
}

TEST(Allocations, DeletingThroughTheInterfaceReleasesTheConverter) {
  const long live = zorl2_test::allocations.live;
  Converter<pb::Zorid, zorid_t>* identifiers = new ZORIDConverter;
  Converter<pb::IntfEntry, IntfEntry>* entries = new IntfEntryConverter;
  delete identifiers;
  delete entries;
  EXPECT_EQ(zorl2_test::allocations.live, live);
}

}  // namespace
