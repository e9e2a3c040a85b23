// The tables that refuse a number are built by the first refusal, which may itself run out of
// memory: at every allocation in turn std::bad_alloc leaves, the output is as it was, and the
// number is refused once there is memory. Each run is a process of its own, in which the table is
// cold.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "convert/intf_entry_converter.h"
#include "native/intf_entry_builder.h"
#include "tests/convert/enum_rows.h"
#include "tests/reliability/exhaust.h"
#include "tests/reliability/native_text.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/exceptions.h"

namespace pb = zorl2::protobuf;

namespace {

// refuse(message) throws std::out_of_range of this text, or std::bad_alloc while memory fails.
// untouched() says whether the output is still what it was. A table takes several allocations: the
// exception's text alone takes no more than two.
template <typename Refuse, typename Untouched>
void ExpectRefusedOnceThereIsMemory(const char* text, const Refuse& refuse,
                                    const Untouched& untouched) {
  proof::InColdProcess([&] {
    bool refused = false;
    long failures = 0;
    while (!refused && failures < 200) {
      bool out_of_memory = false;
      std::string refusal;
      proof::FailAllocation(failures + 1);
      try {
        refuse();
      } catch (const std::bad_alloc&) {
        out_of_memory = true;
      } catch (const std::out_of_range& error) {
        refused = true;
        proof::StopFailing();
        refusal = error.what();
      }
      const bool failed = proof::StopFailing();
      EXPECT_EQ(out_of_memory, failed) << failures;
      EXPECT_EQ(refused, !out_of_memory) << "neither refused nor out of memory";
      EXPECT_EQ(refusal, refused ? text : "");
      EXPECT_TRUE(untouched()) << failures;
      if (testing::Test::HasFailure()) return;
      failures += out_of_memory ? 1 : 0;
    }
    EXPECT_TRUE(refused);
    EXPECT_GE(failures, 3);
  });
}

template <typename Row>
class ColdTables : public testing::Test {
 protected:
  using Message = typename Row::Message;
  using Native = typename Row::Native;
  // The last member is what the output holds, the number behind it is unlisted.
  static constexpr auto kMessage = static_cast<Message>(Row::kCount - 1);
  static constexpr auto kNative = static_cast<Native>(Row::kCount - 1);
};

TYPED_TEST_SUITE(ColdTables, zorl2_test::EnumRows);

TYPED_TEST(ColdTables, ANumberInAMessageIsRefusedOnceThereIsMemory) {
  const auto unlisted = static_cast<typename TypeParam::Message>(TypeParam::kCount);
  typename TypeParam::Native native = this->kNative;
  ExpectRefusedOnceThereIsMemory(
      "bimap<>: invalid key",
      [&] { (IntfEntryConvertHelperProtobuf().*TypeParam::kToNative)(unlisted, native); },
      [&] { return native == TestFixture::kNative; });
}

TYPED_TEST(ColdTables, ANumberInARecordIsRefusedOnceThereIsMemory) {
  const auto unlisted = static_cast<typename TypeParam::Native>(TypeParam::kCount);
  typename TypeParam::Message message = this->kMessage;
  ExpectRefusedOnceThereIsMemory(
      "bimap<>: invalid key",
      [&] { (IntfEntryConvertHelperZOR().*TypeParam::kToMessage)(unlisted, message); },
      [&] { return message == TestFixture::kMessage; });
}

// The category has a table for each direction.
TEST(ColdCategory, InAMessageIsRefusedOnceThereIsMemoryAndTheEntryIsAsItWas) {
  pb::IntfEntry message = zorl2_test::FullEntryMessage();
  message.set_intfcategory(static_cast<pb::InterfaceCategory>(5));
  IntfEntry entry = zorl2_test::OtherEntry();
  const std::string before = proof::Text(entry);
  ExpectRefusedOnceThereIsMemory(
      "map::at", [&] { IntfEntryConverter().Convert(message, entry); },
      [&] { return proof::Text(entry) == before; });
}

TEST(ColdCategory, InARecordIsRefusedOnceThereIsMemory) {
  IntfEntryBuilder builder(zorl2_test::FullEntry());
  builder.setInterfaceCategory(static_cast<InterfaceCategory>(5));
  const IntfEntry entry = builder.Build();
  const pb::IntfEntry whole = zorl2_test::FullEntryMessage();
  pb::IntfEntry message;
  ExpectRefusedOnceThereIsMemory(
      "map::at", [&] { IntfEntryConverter().Convert(entry, message); },
      [&] { return !message.has_intfcategory() && proof::IsPartOf(message, whole); });
}

// The table of a status, reached through a whole entry.
TEST(ColdEntry, AnUnlistedStatusIsRefusedOnceThereIsMemoryAndNothingBehindItIsSet) {
  IntfEntryBuilder builder(zorl2_test::FullEntry());
  IntfEntry::StatusInfo status = zorl2_test::FullStatusInfo();
  status.adminStatus = static_cast<IntfEntry::AdminStatus>(2);
  const IntfEntry entry = builder.addStatusInfo(status).Build();
  const pb::IntfEntry whole = zorl2_test::FullEntryMessage();
  pb::IntfEntry message;
  ExpectRefusedOnceThereIsMemory(
      "bimap<>: invalid key", [&] { IntfEntryConverter().Convert(entry, message); },
      [&] {
        return !message.statusinfo().has_adminstatus() && !message.has_physicalinfo() &&
               proof::IsPartOf(message, whole);
      });
}

}  // namespace
