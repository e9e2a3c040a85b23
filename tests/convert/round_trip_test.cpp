// Ten thousand generated entries on their way to the record, to a message and through bytes.
#include <gmock/gmock.h>

#include <cstdint>
#include <set>
#include <string>

#include "convert/intf_entry_converter.h"
#include "tests/support/entry_generator.h"
#include "tests/support/log_capture.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"

namespace pb = zorl2::protobuf;

using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;

namespace {

constexpr int kEntries = 10000;
constexpr std::uint64_t kSeed = 20240607;

TEST(RoundTrip, GeneratedEntriesComeBackEqual) {
  zorl2_test::EntryGenerator generator(kSeed);
  IntfEntryConverter converter;
  // Reused throughout, so that what one entry leaves behind would show in the next.
  IntfEntry entry, entry_again;
  pb::IntfEntry back;
  for (int i = 0; i < kEntries; ++i) {
    const pb::IntfEntry message = generator.Next();
    ASSERT_TRUE(converter.Convert(message, entry)) << i;
    ASSERT_TRUE(converter.Convert(entry, back)) << i;
    ASSERT_THAT(back, EqualsMessage(message)) << "entry " << i << " of seed " << kSeed;
    ASSERT_TRUE(converter.Convert(back, entry_again)) << i;
    ASSERT_THAT(entry_again, EqualsNative(entry)) << "entry " << i << " of seed " << kSeed;
  }
}

TEST(RoundTrip, GeneratedEntriesComeBackEqualThroughTheirBytes) {
  zorl2_test::EntryGenerator generator(kSeed + 1);
  IntfEntryConverter converter;
  zorl2_test::LogCapture log;
  for (int i = 0; i < kEntries; ++i) {
    const pb::IntfEntry message = generator.Next();
    IntfEntry entry;
    ASSERT_TRUE(converter.Convert(message, entry)) << i;
    pb::IntfEntry sent, received;
    ASSERT_TRUE(converter.Convert(entry, sent)) << i;
    std::string bytes;
    ASSERT_TRUE(sent.SerializeToString(&bytes));
    ASSERT_TRUE(received.ParseFromString(bytes));
    ASSERT_THAT(received, EqualsMessage(message)) << "entry " << i << " of seed " << kSeed + 1;
  }
  // The generated texts are UTF-8.
  EXPECT_THAT(log.TakeErrors(), testing::IsEmpty());
}

// The two tests above say little unless the generator reaches every member of every enumeration.
TEST(RoundTrip, TheGeneratorReachesEveryMemberAndBothEndsOfTheNumbers) {
  zorl2_test::EntryGenerator generator(kSeed);
  std::set<int> speeds, types, vlans, categories, protocols;
  std::set<std::uint32_t> mtus;
  bool empty_lists = false, empty_text = false, allocated_text = false;
  for (int i = 0; i < kEntries; ++i) {
    const pb::IntfEntry message = generator.Next();
    speeds.insert(message.physicalinfo().eth_speed());
    types.insert(message.typeinfo().interfacetype());
    vlans.insert(message.typeinfo().vlantype());
    categories.insert(message.intfcategory());
    protocols.insert(message.shutdownprotos().begin(), message.shutdownprotos().end());
    mtus.insert(message.physicalinfo().intf_mtu());
    empty_lists |= message.shutdownprotos().empty() && message.blockinfo().empty();
    empty_text |= message.generalinfo().intf_name().empty();
    allocated_text |= message.generalinfo().intf_name().size() > 15;
  }
  EXPECT_EQ(speeds.size(), 12U);
  EXPECT_EQ(types.size(), 5U);
  EXPECT_EQ(vlans.size(), 5U);
  EXPECT_EQ(categories.size(), 5U);
  EXPECT_EQ(protocols.size(), 13U);
  EXPECT_EQ(mtus.count(0) + mtus.count(0x80000000) + mtus.count(0xFFFFFFFF), 3U);
  EXPECT_TRUE(empty_lists && empty_text && allocated_text);
}

}  // namespace
