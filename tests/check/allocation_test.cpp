// Check() allocates nothing for an argument that converts, FindLosses() nothing without losses.
#include <gtest/gtest.h>

#include <google/protobuf/dynamic_message.h>

#include <memory>

#include "check/check.h"
#include "tests/support/allocations.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

using zorl2_test::AllocationsOf;
using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;

namespace {

// Makes each call once, so that its first use is the one that counts.
template <typename Source>
void ExpectNone(const Source& source) {
  bool converts = false;
  bool lossless = false;
  EXPECT_EQ(AllocationsOf([&] { converts = zorl2::check::Check(source).rule.empty(); }), 0);
  EXPECT_EQ(AllocationsOf([&] { lossless = zorl2::check::FindLosses(source).empty(); }), 0);
  EXPECT_TRUE(converts);
  EXPECT_TRUE(lossless);
}

// Checks a generated message, one whose type is known at run time, and a DynamicMessage.
template <typename Message>
void ExpectNoneOfMessage(const Message& message) {
  ExpectNone(static_cast<const google::protobuf::Message&>(message));
  ExpectNone(message);
  static google::protobuf::DynamicMessageFactory factory;
  const std::unique_ptr<google::protobuf::Message> dynamic(
      factory.GetPrototype(Message::descriptor())->New());
  ASSERT_TRUE(dynamic->ParseFromString(message.SerializeAsString()));
  ExpectNone<google::protobuf::Message>(*dynamic);
}

constexpr char kClient[] = R"pb(
  clientAddress: 5
  protocolType: STP
  intfCategory { L1: true L2: false VP: true L2_SUB_IF: false VIRTUAL_IF: true }
  token: "a token that is too long to be kept inside its string"
)pb";

template <typename Signal>
Signal FullSignal(Signal signal) {
  for (int i = 0; i < 1000; ++i) {
    auto& intf = *signal.add_intfs();
    for (const int octet : {1, 2, i / 256, i % 256}) {
      intf.mutable_zorid()->add_value(static_cast<std::uint32_t>(octet));
    }
    intf.set_state(static_cast<decltype(intf.state())>(i % 2));
  }
  return signal;
}

TEST(CheckAllocations, Lists_None) {
  pb::IntfEntryList list;
  *list.mutable_infoclient() = FromText<pb::InformationClient>(kClient);
  for (int i = 0; i < 100; ++i) *list.add_intfentry() = FullEntryMessage();
  ExpectNoneOfMessage(list);
  pb::IntfIndication indication;
  indication.set_indcategory(pb::VP);
  indication.set_indtype(pb::DEL);
  *indication.mutable_intfentry() = FullEntryMessage();
  ExpectNoneOfMessage(indication);
}

TEST(CheckAllocations, Messages_None) {
  ExpectNoneOfMessage(FromText<pb::Zorid>("value: [ 1, 2, 3, 4 ]"));
  ExpectNoneOfMessage(FullEntryMessage());
  ExpectNoneOfMessage(FullSignal(FromText<pb::ShutStateSync>("shutProtocol: STP")));
  ExpectNoneOfMessage(FullSignal(FromText<pb::BlockStateSync>("blockProtocol: ERPS")));
  ExpectNoneOfMessage(FromText<pb::InformationClient>(kClient));
  ExpectNoneOfMessage(FromText<pb::LagMemberOperationProto>(R"pb(
    lag { value: [ 1, 2, 3, 4 ] }
    member { value: [ 5, 6, 7, 8 ] }
    token: 9
    collecting: true
    distributing: true)pb"));
}

TEST(CheckAllocations, Records_None) {
  ExpectNone(zorid_t{{1, 2, 3, 4}});
  ExpectNone(FullEntry());
  ExpectNone(ShutStateInfoSyncSignal{{{{{1, 2, 3, 4}}, true}}, STP});
  ExpectNone(BlockStateInfoSyncSignal{{{{{1, 2, 3, 4}}, BLOCK_STATE_BLOCK}}, STP});
  ZORL2InfoClientConfig client;
  client.interfaceCategories = {L2, VP};
  ExpectNone(client);
  ExpectNone(LagMemberOperation{{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 9, 0, true, true});
}

TEST(CheckAllocations, AVerdictThatFails_Some) {
  EXPECT_GT(AllocationsOf([] { zorl2::check::Check(pb::ShutStateSync()); }), 0)
      << "the counter does not count";
}

}  // namespace
