// Tests the support headers: with a matcher that notices nothing, every other test would pass.
#include <gmock/gmock.h>

#include <set>
#include <string>

#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_matchers.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

using testing::HasSubstr;
using testing::Not;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::FromText;
using zorl2_test::NativeDifference;

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

TEST(EqualsMessage, NoticesUnknownFieldsPresenceAndOrder) {
  const auto expected = FromText<pb::GeneralInfo>("bridge_port_number: 0");
  EXPECT_THAT(pb::GeneralInfo(), Not(EqualsMessage(expected)));
  pb::GeneralInfo unknown = expected;
  unknown.mutable_unknown_fields()->AddVarint(99, 1);
  EXPECT_THAT(unknown, Not(EqualsMessage(expected)));
  EXPECT_THAT(FromText<pb::Zorid>("value: 2 value: 1"),
              Not(EqualsText<pb::Zorid>("value: 1 value: 2")));
}

TEST(EqualsNative, NoticesEveryByteOfAString) {
  IntfEntry::GeneralInfo with_zero = zorl2_test::FullGeneralInfo();
  with_zero.intf_name += '\0';
  EXPECT_THAT(with_zero, Not(EqualsNative(zorl2_test::FullGeneralInfo())));
  EXPECT_EQ(NativeDifference(zorl2_test::FullGeneralInfo(), with_zero),
            "- intf_name: \"ge-0/0/7\"\n+ intf_name: \"ge-0/0/7\\x00\"\n");
}

TEST(EqualsNative, NoticesTheOrderAndTheNumberOfStates) {
  const BlockStateInfoSyncSignal one{{{{{1, 2, 3, 4}}, BLOCK_STATE_BLOCK}}, STP};
  BlockStateInfoSyncSignal two = one;
  two.blockStates[zorid_t{{1, 2, 3, 5}}] = BLOCK_STATE_BLOCK;
  EXPECT_EQ(NativeDifference(one, two), "+ 1.2.3.5: 1\n");
  EXPECT_EQ(NativeDifference(two, one), "- 1.2.3.5: 1\n");
}

// Against the second entry every line is different: a member that a fixture leaves at its default,
// or that the text omits, is noticed here.
TEST(EntryFixtures, TheTwoEntriesDifferInEveryMember) {
  const std::string difference =
      NativeDifference(zorl2_test::FullEntry(), zorl2_test::OtherEntry());
  const auto lines = [](const std::string& text, const std::string& mark) {
    std::size_t count = text.rfind(mark, 0) == 0 ? 1 : 0;
    for (auto at = text.find("\n" + mark); at != std::string::npos;
         at = text.find("\n" + mark, at + 1)) {
      ++count;
    }
    return count;
  };
  EXPECT_EQ(lines(difference, "- "), 33U);
  EXPECT_EQ(lines(difference, "+ "), 33U);
}

TEST(EntryFixtures, NoFieldOfTheMessageHasItsDefault) {
  const pb::IntfEntry message = zorl2_test::FullEntryMessage();
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_TRUE(message.has_parent());
  EXPECT_TRUE(message.generalinfo().has_bridge_port_number());
  const std::string text = message.DebugString();
  EXPECT_THAT(text, Not(HasSubstr(": false")));
  EXPECT_THAT(text, Not(HasSubstr(": 0\n")));
  EXPECT_THAT(text, Not(HasSubstr("\"\"")));
  EXPECT_THAT(text, Not(HasSubstr("UNKNOWN")));
}

TEST(RequiredFields, ListsNestedFieldsAndThoseOfEveryElement) {
  const pb::IntfEntry full = zorl2_test::FullEntryMessage();
  std::set<std::string> names;
  for (const auto& path : zorl2_test::RequiredFields(full)) {
    names.insert(path.Name());
    if (path.Name() != "blockInfo[1].state") continue;
    pb::IntfEntry message = full;
    zorl2_test::RemoveField(path, message);
    EXPECT_EQ(zorl2_test::MessageDifference(full, message),
              "deleted: blockInfo[1].state: BLOCK_STATE_FORWARD\n");
  }
  // 6 of the entry, 4 general, 7 status, 3 physical, 3 type, 6 flags, 2 in each of 2 elements.
  EXPECT_EQ(names.size(), 33U);
  EXPECT_EQ(names.count("parent"), 0U);
  EXPECT_EQ(names.count("typeInfo.interfaceFlags.if_multicast"), 1U);
}

}  // namespace
