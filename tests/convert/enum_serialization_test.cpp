// The four functions that translate every number.
#include "convert/enum_serialization.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/support/enum_numbers.h"

namespace pb = zorl2::protobuf;

using zorl2_test::NumbersOutside;

namespace {

static_assert(noexcept(SerializeProtocolType(LLDP)));
static_assert(noexcept(DeserializeProtocolType(pb::LLDP)));
static_assert(noexcept(SerializeBlockState(BLOCK_STATE_BLOCK)));
static_assert(noexcept(DeserializeBlockState(pb::BLOCK_STATE_BLOCK)));

// The thirteen protocols: the value in a message, the native value.
constexpr struct {
  pb::ProtocolType message;
  ProtocolType native;
} kProtocols[] = {
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

TEST(EnumSerialization, EveryProtocolBecomesTheProtocolOfItsName) {
  static_assert(std::size(kProtocols) == 13 && pb::ProtocolType_MAX == 12);
  for (const auto& row : kProtocols) {
    EXPECT_EQ(SerializeProtocolType(row.native), row.message) << row.native;
    EXPECT_EQ(DeserializeProtocolType(row.message), row.native) << row.message;
  }
}

TEST(EnumSerialization, AnUnlistedProtocolBecomesTheUnknownProtocol) {
  for (const std::int32_t number : NumbersOutside(13)) {
    EXPECT_EQ(SerializeProtocolType(static_cast<ProtocolType>(number)), 0) << number;
    EXPECT_EQ(DeserializeProtocolType(static_cast<pb::ProtocolType>(number)), 12) << number;
  }
}

TEST(EnumSerialization, ABlockStateOtherThanOneBecomesForwarding) {
  EXPECT_EQ(SerializeBlockState(BLOCK_STATE_BLOCK), pb::BLOCK_STATE_BLOCK);
  EXPECT_EQ(DeserializeBlockState(pb::BLOCK_STATE_BLOCK), BLOCK_STATE_BLOCK);
  auto others = NumbersOutside(2);
  others.push_back(0);
  for (const std::int32_t number : others) {
    EXPECT_EQ(SerializeBlockState(static_cast<BlockState>(number)), 0) << number;
    EXPECT_EQ(DeserializeBlockState(static_cast<pb::BlockState>(number)), 0) << number;
  }
}

}  // namespace
