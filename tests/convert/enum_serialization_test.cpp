#include "convert/enum_serialization.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

#include "tests/support/enum_numbers.h"

namespace pb = zorl2::protobuf;

using zorl2_test::NumbersOutside;

namespace {

// The thirteen protocols: the number in a message, the native number.
struct Row {
  pb::ProtocolType message;
  ProtocolType native;
};
constexpr Row kProtocols[] = {
    {pb::PROTOCOL_UNKNOWN, PROTOCOL_UNKNOWN},
    {pb::LLDP, LLDP},
    {pb::L2VM, L2VM},
    {pb::LACP, LACP},
    {pb::STP, STP},
    {pb::ERPS, ERPS},
    {pb::CFM, CFM},
    {pb::LBD, LBD},
    {pb::LFD, LFD},
    {pb::EFM, EFM},
    {pb::L1_PROTO, L1_PROTO},
    {pb::L2_PROTO, L2_PROTO},
    {pb::BACKUPLINK, BACKUPLINK},
};

TEST(EnumSerialization, EveryProtocolByItsName) {
  EXPECT_EQ(std::size(kProtocols), 13U);
  for (const Row& row : kProtocols) {
    EXPECT_EQ(SerializeProtocolType(row.native), row.message) << row.native;
    EXPECT_EQ(DeserializeProtocolType(row.message), row.native) << row.message;
  }
}

TEST(EnumSerialization, EveryProtocolByItsNumber) {
  for (int number = 0; number <= 11; ++number) {
    EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(number)), number + 1);
    EXPECT_EQ(DeserializeProtocolType(static_cast<pb::ProtocolType>(number + 1)), number);
  }
  EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(12)), 0);
  EXPECT_EQ(DeserializeProtocolType(static_cast<pb::ProtocolType>(0)), 12);
}

TEST(EnumSerialization, TheTwoProtocolsThatStateSignalsRefuseAreTranslatedHere) {
  EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(9)), pb::L1_PROTO);
  EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(10)), pb::L2_PROTO);
  EXPECT_EQ(DeserializeProtocolType(pb::L1_PROTO), static_cast<ProtocolType>(9));
  EXPECT_EQ(DeserializeProtocolType(pb::L2_PROTO), static_cast<ProtocolType>(10));
}

TEST(EnumSerialization, EveryOtherNumberIsTheUnknownProtocol) {
  for (const std::int32_t number : NumbersOutside(13)) {
    EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(number)), 0) << number;
    EXPECT_EQ(DeserializeProtocolType(static_cast<pb::ProtocolType>(number)), 12) << number;
  }
  EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(-13)), 0);
  EXPECT_EQ(DeserializeProtocolType(static_cast<pb::ProtocolType>(-12)), 12);
}

TEST(EnumSerialization, BothBlockStatesByName) {
  EXPECT_EQ(SerializeBlockState(BLOCK_STATE_FORWARD), pb::BLOCK_STATE_FORWARD);
  EXPECT_EQ(SerializeBlockState(BLOCK_STATE_BLOCK), pb::BLOCK_STATE_BLOCK);
  EXPECT_EQ(DeserializeBlockState(pb::BLOCK_STATE_FORWARD), BLOCK_STATE_FORWARD);
  EXPECT_EQ(DeserializeBlockState(pb::BLOCK_STATE_BLOCK), BLOCK_STATE_BLOCK);
}

TEST(EnumSerialization, EveryOtherNumberIsForwarding) {
  for (const std::int32_t number : NumbersOutside(2)) {
    // 65537, 257: what is left of 1 when a number is cut must not make it a block.
    EXPECT_EQ(SerializeBlockState(static_cast<BlockState>(number)), 0) << number;
    EXPECT_EQ(DeserializeBlockState(static_cast<pb::BlockState>(number)), 0) << number;
  }
}

TEST(EnumSerialization, NeverThrows) {
  static_assert(
      noexcept(SerializeProtocolType(LLDP))&& noexcept(DeserializeProtocolType(pb::LLDP)));
  static_assert(noexcept(SerializeBlockState(BLOCK_STATE_BLOCK)));
  static_assert(noexcept(DeserializeBlockState(pb::BLOCK_STATE_BLOCK)));
  static_assert(std::is_same_v<decltype(&SerializeProtocolType),
                               pb::ProtocolType (*)(ProtocolType) noexcept>);
}

}  // namespace
