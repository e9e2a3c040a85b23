#include <gmock/gmock.h>

#include "intf_state.pb.h"
#include "tests/support/message_matchers.h"
#include "tests/support/unknown_fields.h"
#include "tests/support/wire.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::Pair;
using zorl2_test::EqualsText;
using zorl2_test::FromText;
using zorl2_test::FromWire;
using zorl2_test::UnknownVarints;
using zorl2_test::WireOf;

namespace {

TEST(IntfStateWire, AShutSignalWithoutInterfacesIsItsProtocolAlone) {
  const auto message = FromText<pb::ShutStateSync>("shutProtocol: STP");
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_EQ(WireOf(message), "08 04");
}

TEST(IntfStateWire, EveryFieldStandsUnderItsNumber) {
  EXPECT_EQ(WireOf(FromText<pb::ShutStateSync>(
                "shutProtocol: LLDP intfs { zorid { value: [1, 2, 3, 4] } state: true }")),
            "08 01 12 0A 0A 06 0A 04 01 02 03 04 10 01");
  EXPECT_EQ(WireOf(FromText<pb::BlockStateSync>(
                "blockProtocol: ERPS intfs { zorid {} state: BLOCK_STATE_BLOCK }")),
            "08 05 12 04 0A 00 10 01");
  EXPECT_EQ(WireOf(FromText<pb::HoldTimeConfig>("configs { zorid {} down_ms: 300 }")),
            "0A 05 0A 00 10 AC 02");
}

TEST(IntfStateWire, BothFieldsOfEveryElementAreNeeded) {
  for (const char* element : {"zorid {}", "state: true", ""}) {
    EXPECT_FALSE(FromText<pb::ShutStateInfo>(element).IsInitialized()) << element;
  }
  EXPECT_TRUE(FromText<pb::ShutStateInfo>("zorid {} state: false").IsInitialized());
  for (const char* element : {"zorid {}", "state: BLOCK_STATE_BLOCK", ""}) {
    EXPECT_FALSE(FromText<pb::BlockStateInfo>(element).IsInitialized()) << element;
  }
  EXPECT_TRUE(FromText<pb::BlockStateInfo>("zorid {} state: BLOCK_STATE_FORWARD").IsInitialized());
  for (const char* element : {"zorid {}", "down_ms: 1", ""}) {
    EXPECT_FALSE(FromText<pb::HoldTimeInstance>(element).IsInitialized()) << element;
  }
  EXPECT_TRUE(FromText<pb::HoldTimeInstance>("zorid {} down_ms: 0").IsInitialized());
}

TEST(IntfStateWire, AnElementThatIsNotInitialisedSpoilsItsSignal) {
  EXPECT_TRUE(
      FromText<pb::BlockStateSync>("blockProtocol: STP intfs { zorid {} state: BLOCK_STATE_BLOCK }")
          .IsInitialized());
  EXPECT_FALSE(
      FromText<pb::BlockStateSync>("blockProtocol: STP intfs { zorid {} state: BLOCK_STATE_BLOCK }"
                                   "intfs { zorid {} }")
          .IsInitialized());
  EXPECT_FALSE(
      FromText<pb::ShutStateSync>("shutProtocol: STP intfs { state: true }").IsInitialized());
  EXPECT_FALSE(FromText<pb::HoldTimeConfig>("configs { zorid {} }").IsInitialized());
  EXPECT_TRUE(pb::HoldTimeConfig().IsInitialized());
}

TEST(IntfStateWire, TheProtocolIsNeeded) {
  EXPECT_FALSE(pb::ShutStateSync().IsInitialized());
  EXPECT_FALSE(pb::BlockStateSync().IsInitialized());
}

TEST(IntfStateWire, AnUnlistedBlockStateStaysAbsentAndIsKeptAsUnknown) {
  const auto info = FromWire<pb::BlockStateInfo>("0A 00 10 02");
  EXPECT_FALSE(info.has_state());
  EXPECT_TRUE(info.has_zorid());
  EXPECT_THAT(UnknownVarints(info), ElementsAre(Pair(2, 2)));
  EXPECT_EQ(WireOf(info), "0A 00 10 02");
  EXPECT_FALSE(FromWire<pb::BlockStateSync>("08 04 12 04 0A 00 10 02").IsInitialized());
}

TEST(IntfStateWire, AnUnlistedProtocolStaysAbsentAndIsKeptAsUnknown) {
  const auto shut = FromWire<pb::ShutStateSync>("08 0D");
  EXPECT_FALSE(shut.has_shutprotocol());
  EXPECT_FALSE(shut.IsInitialized());
  EXPECT_THAT(UnknownVarints(shut), ElementsAre(Pair(1, 13)));
  EXPECT_EQ(WireOf(shut), "08 0D");
  const auto block = FromWire<pb::BlockStateSync>("08 0D");
  EXPECT_FALSE(block.has_blockprotocol());
  EXPECT_FALSE(block.IsInitialized());
  EXPECT_THAT(UnknownVarints(block), ElementsAre(Pair(1, 13)));
  EXPECT_EQ(WireOf(block), "08 0D");
}

// A valid message; it is the converter that refuses it.
TEST(IntfStateWire, ASignalForL1ProtoIsAMessageLikeAnyOther) {
  pb::ShutStateSync message;
  EXPECT_TRUE(message.ParseFromString(zorl2_test::FromHex("08 0A")));
  EXPECT_THAT(message, EqualsText<pb::ShutStateSync>("shutProtocol: L1_PROTO"));
}

}  // namespace
