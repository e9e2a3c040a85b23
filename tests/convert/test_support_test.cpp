// The support headers themselves: a matcher that sees nothing would let every other test pass.
#include <gmock/gmock.h>

#include <set>
#include <string>

#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::FromText;

namespace {

TEST(EqualsMessage, NamesTheFieldThatDiffersAndBothValues) {
  const pb::IntfEntry expected = zorl2_test::FullEntryMessage();
  pb::IntfEntry actual = expected;
  EXPECT_THAT(actual, EqualsMessage(expected));
  actual.mutable_blockinfo(1)->set_state(pb::BLOCK_STATE_BLOCK);
  EXPECT_THAT(actual, Not(EqualsMessage(expected)));
  EXPECT_EQ(zorl2_test::MessageDifference(expected, actual),
            "modified: blockInfo[1].state: BLOCK_STATE_FORWARD -> BLOCK_STATE_BLOCK\n");
}

TEST(EqualsMessage, SeesAnUnknownFieldAndTheAbsenceOfADefault) {
  const auto expected = FromText<pb::GeneralInfo>("bridge_port_number: 0");
  EXPECT_THAT(pb::GeneralInfo(), Not(EqualsMessage(expected)));
  pb::GeneralInfo unknown = expected;
  unknown.mutable_unknown_fields()->AddVarint(99, 1);
  EXPECT_THAT(unknown, Not(EqualsMessage(expected)));
}

TEST(EqualsMessage, SeesTheOrderOfARepeatedField) {
  EXPECT_THAT(FromText<pb::Zorid>("value: 2 value: 1"),
              Not(EqualsText<pb::Zorid>("value: 1 value: 2")));
}

// One change in each of the members: the line of that member, and no other, is reported.
TEST(EqualsNative, SeesEachMemberAlone) {
  const IntfEntry expected = zorl2_test::FullEntry();
  EXPECT_THAT(expected, EqualsNative(expected));
  const auto report = [&](const auto& change) {
    IntfEntryBuilder builder(zorl2_test::FullEntry());
    change(builder);
    return zorl2_test::NativeDifference(expected, builder.Build());
  };
  EXPECT_EQ(report([](auto& to) {
              to.addZorId({{11, 22, 33, 45}});
            }),
            "- id: 11.22.33.44\n+ id: 11.22.33.45\n");
  EXPECT_EQ(report([](auto& to) {
              to.addParent({{55, 66, 77, 60}});
            }),
            "- parent: 55.66.77.188\n+ parent: 55.66.77.60\n");
  EXPECT_EQ(report([](auto& to) { to.setInterfaceCategory(VP); }),
            "- interfaceCategory: 3\n+ interfaceCategory: 2\n");
  EXPECT_EQ(report([](auto& to) { to.addShutdownProto(STP); }), "+ shutdownProtos[3]: 3\n");
  EXPECT_EQ(report([](auto& to) {
              to.addBlockInfo({STP, BLOCK_STATE_BLOCK});
            }),
            "+ blockInfo[2].protocol: 3\n+ blockInfo[2].state: 1\n");
}

TEST(EqualsNative, TellsStringsApartByEveryOctet) {
  IntfEntry::GeneralInfo with_zero = zorl2_test::FullGeneralInfo();
  with_zero.intf_name += '\0';
  EXPECT_THAT(with_zero, Not(EqualsNative(zorl2_test::FullGeneralInfo())));
  EXPECT_EQ(zorl2_test::NativeDifference(zorl2_test::FullGeneralInfo(), with_zero),
            "- intf_name: \"ge-0/0/7\"\n+ intf_name: \"ge-0/0/7\\x00\"\n");
}

// Against the second fixture every member is different, so a member that one of them leaves at
// its default, or that the comparison forgets, shows here.
TEST(EntryFixtures, TheTwoNativeEntriesDifferInEveryMember) {
  zorl2_test::Members full = zorl2_test::MembersOf(zorl2_test::FullEntry());
  zorl2_test::Members other = zorl2_test::MembersOf(zorl2_test::OtherEntry());
  ASSERT_EQ(full.size(), 33U);
  ASSERT_EQ(other.size(), full.size());
  for (std::size_t i = 0; i < full.size(); ++i) EXPECT_NE(full[i], other[i]);
}

TEST(EntryFixtures, EveryFieldOfTheMessageIsSetToSomethingElseThanItsDefault) {
  const pb::IntfEntry message = zorl2_test::FullEntryMessage();
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_TRUE(message.has_parent());
  EXPECT_TRUE(message.generalinfo().has_bridge_port_number());
  // The text form of a message whose fields all equal their defaults would show one of these.
  const std::string text = message.DebugString();
  EXPECT_THAT(text, Not(HasSubstr(": false")));
  EXPECT_THAT(text, Not(HasSubstr(": 0\n")));
  EXPECT_THAT(text, Not(HasSubstr("\"\"")));
  EXPECT_THAT(text, Not(HasSubstr("UNKNOWN")));
}

TEST(RequiredFields, ListsNestedFieldsAndThoseOfEveryElement) {
  std::set<std::string> names;
  for (const auto& path : zorl2_test::RequiredFields(zorl2_test::FullEntryMessage())) {
    names.insert(path.Name());
  }
  // 6 of the entry, 4 general, 7 status, 3 physical, 3 type, 6 flags, 2 in each of 2 elements.
  EXPECT_EQ(names.size(), 33U);
  EXPECT_EQ(names.count("zorid"), 1U);
  EXPECT_EQ(names.count("parent"), 0U);
  EXPECT_EQ(names.count("typeInfo.interfaceFlags.if_multicast"), 1U);
  EXPECT_EQ(names.count("blockInfo[0].protocol"), 1U);
  EXPECT_EQ(names.count("blockInfo[1].state"), 1U);
}

TEST(RequiredFields, RemovingOneLeavesEverythingElse) {
  const pb::IntfEntry full = zorl2_test::FullEntryMessage();
  for (const auto& path : zorl2_test::RequiredFields(full)) {
    if (path.Name() != "blockInfo[1].state") continue;
    pb::IntfEntry message = full;
    zorl2_test::RemoveField(path, message);
    EXPECT_EQ(zorl2_test::MessageDifference(full, message),
              "deleted: blockInfo[1].state: BLOCK_STATE_FORWARD\n");
  }
}

}  // namespace
