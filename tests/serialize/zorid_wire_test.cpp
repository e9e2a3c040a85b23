#include <gmock/gmock.h>

#include "tests/support/message_matchers.h"
#include "tests/support/wire.h"
#include "zorid.pb.h"

namespace pb = zorl2::protobuf;

using zorl2_test::EqualsText;
using zorl2_test::FromText;
using zorl2_test::FromWire;
using zorl2_test::WireOf;

namespace {

TEST(ZoridWire, WithoutElementsItParsesAndIsInitialised) {
  pb::Zorid message;
  EXPECT_TRUE(message.ParseFromString(""));
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_EQ(message.value_size(), 0);
  EXPECT_EQ(WireOf(message), "");
}

TEST(ZoridWire, FourElementsBelow128TakeOneOctetEach) {
  EXPECT_EQ(WireOf(FromText<pb::Zorid>("value: [1, 0, 127, 4]")), "0A 04 01 00 7F 04");
}

TEST(ZoridWire, AnElementFrom128OnTakesTwoOctetsAndTheLengthGrows) {
  EXPECT_EQ(WireOf(FromText<pb::Zorid>("value: [1, 128, 127, 4]")), "0A 05 01 80 01 7F 04");
  EXPECT_EQ(WireOf(FromText<pb::Zorid>("value: [255, 255, 255, 255]")),
            "0A 08 FF 01 FF 01 FF 01 FF 01");
}

TEST(ZoridWire, PackedAndUnpackedElementsParseAlike) {
  EXPECT_THAT(FromWire<pb::Zorid>("0A 04 0A 14 1E 28"),
              EqualsText<pb::Zorid>("value: [10, 20, 30, 40]"));
  EXPECT_THAT(FromWire<pb::Zorid>("08 0A 08 14 08 1E 08 28"),
              EqualsText<pb::Zorid>("value: [10, 20, 30, 40]"));
  EXPECT_THAT(FromWire<pb::Zorid>("08 0A 0A 02 14 1E 08 28"),
              EqualsText<pb::Zorid>("value: [10, 20, 30, 40]"));
}

TEST(ZoridWire, SetsNoBoundToTheCountNorToAnElement) {
  EXPECT_THAT(FromWire<pb::Zorid>("0A 09 01 02 03 04 FF FF FF FF 0F"),
              EqualsText<pb::Zorid>("value: [1, 2, 3, 4, 4294967295]"));
}

TEST(ZoridWire, ATruncatedRunFailsToParse) {
  pb::Zorid message;
  EXPECT_FALSE(message.ParseFromString(zorl2_test::FromHex("0A 04 01 02 03")));
}

}  // namespace
