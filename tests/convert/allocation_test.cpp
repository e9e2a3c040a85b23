// What the converters allocate, and what they leave behind when memory runs out.
#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "convert/intf_entry_converter.h"
#include "convert/zorid_converter.h"
#include "tests/support/allocations.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"

namespace pb = zorl2::protobuf;

using zorl2_test::AllocationsOf;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::FailEachAllocation;
using zorl2_test::FromText;
using zorl2_test::FullEntryMessage;
using zorl2_test::OtherEntry;

namespace {

TEST(Allocations, AnIdentifierIsReadWithoutAny) {
  const auto good = FromText<pb::Zorid>("value: [1, 2, 3, 4]");
  const auto bad = FromText<pb::Zorid>("value: [1, 2, 3]");
  zorid_t id;
  EXPECT_EQ(AllocationsOf([&] { ZORIDConverter().Convert(good, id); }), 0);
  EXPECT_EQ(AllocationsOf([&] { ZORIDConverter().Convert(bad, id); }), 0);
}

TEST(Allocations, AnIdentifierIsWrittenWithOneAndIntoAReusedMessageWithoutAny) {
  pb::Zorid message;
  EXPECT_EQ(AllocationsOf([&] { ZORIDConverter().Convert(zorid_t{{1, 2, 3, 4}}, message); }), 1);
  EXPECT_EQ(AllocationsOf([&] { ZORIDConverter().Convert(zorid_t{{5, 6, 7, 8}}, message); }), 0);
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [5, 6, 7, 8]"));
}

TEST(Allocations, AnIdentifierThatCannotBeWrittenLeavesTheMessageCleared) {
  pb::Zorid message;
  message.mutable_unknown_fields()->AddVarint(9, 9);
  EXPECT_EQ(FailEachAllocation(
                [&] {
                  ZORIDConverter().Convert(zorid_t{{1, 2, 3, 4}}, message);
                },
                [&] { EXPECT_THAT(message, EqualsText<pb::Zorid>("")); }),
            1);
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [1, 2, 3, 4]"));
}

TEST(Allocations, NativeToMessage_RunningOutOfMemoryThrowsAndTheNextCallSucceeds) {
  IntfEntryConverter converter;
  pb::IntfEntry warm;
  ASSERT_TRUE(converter.Convert(OtherEntry(), warm));
  const IntfEntry entry = OtherEntry();
  pb::IntfEntry message;
  long failures = 0;
  EXPECT_NO_THROW(failures = FailEachAllocation(
                      [&] {
                        message.Clear();
                        pb::IntfEntry fresh;
                        converter.Convert(entry, fresh);
                        message.Swap(&fresh);
                      },
                      [&] { EXPECT_THAT(message, EqualsText<pb::IntfEntry>("")); }));
  EXPECT_GE(failures, 10);
  EXPECT_THAT(message, EqualsMessage(warm));
}

TEST(Allocations, AConverterDeletedThroughItsInterfaceGivesItsMemoryBack) {
  const long alive = zorl2_test::allocations - zorl2_test::deallocations;
  Converter<pb::Zorid, zorid_t>* identifiers = new ZORIDConverter;
  Converter<pb::IntfEntry, IntfEntry>* entries = new IntfEntryConverter;
  EXPECT_EQ(zorl2_test::allocations - zorl2_test::deallocations, alive + 2);
  delete identifiers;
  delete entries;
  EXPECT_EQ(zorl2_test::allocations - zorl2_test::deallocations, alive);
}

}  // namespace
