#include "native/zorid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/native_entry.h"

namespace {

int Sign(int number) { return (number > 0) - (number < 0); }

// -1, 0 or 1, as the ordering under test says.
int Order(const zorid_t& a, const zorid_t& b) {
  EXPECT_FALSE(a < b && b < a);
  return a < b ? -1 : b < a ? 1 : 0;
}

TEST(Zorid, IsFourOctetsCopiedByValue) {
  static_assert(sizeof(zorid_t) == 4);
  static_assert(alignof(zorid_t) == 1);
  static_assert(std::is_trivially_copyable_v<zorid_t>);
  static_assert(std::is_standard_layout_v<zorid_t>);
  const zorid_t id{{1, 2, 3, 200}};
  const std::uint8_t octets[] = {1, 2, 3, 200};
  EXPECT_EQ(std::memcmp(&id, octets, 4), 0);
  zorid_t copy = id;
  copy.octets[0] = 9;
  EXPECT_EQ(id.octets[0], 1);
  EXPECT_EQ(copy.octets[3], 200);
}

TEST(Zorid, DefaultConstructedIsAllZero) {
  // Built over memory that is not zero, so that the initialisers are seen to do it.
  unsigned char memory[sizeof(zorid_t)];
  std::memset(memory, 0xA5, sizeof(memory));
  const auto* id = new (memory) zorid_t;
  EXPECT_EQ(*id, (zorid_t{{0, 0, 0, 0}}));
}

TEST(Zorid, OrdersByTheFirstOctetThatDiffers) {
  EXPECT_LT((zorid_t{{0, 0, 0, 1}}), (zorid_t{{0, 0, 1, 0}}));
  EXPECT_LT((zorid_t{{0, 255, 255, 255}}), (zorid_t{{1, 0, 0, 0}}));
  EXPECT_FALSE((zorid_t{{1, 0, 0, 0}}) < (zorid_t{{0, 255, 255, 255}}));
}

TEST(Zorid, OrdersOctetsAsUnsigned) {
  for (int position = 0; position < 4; ++position) {
    zorid_t small, large;
    small.octets[position] = 127;
    large.octets[position] = 128;
    EXPECT_LT(small, large) << "octet " << position;
    EXPECT_FALSE(large < small) << "octet " << position;
  }
}

TEST(Zorid, EqualOctetsAreEquivalent) {
  const zorid_t a{{9, 8, 7, 6}}, b{{9, 8, 7, 6}};
  EXPECT_FALSE(a < b);
  EXPECT_FALSE(b < a);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  std::map<zorid_t, int> map;
  map[a] = 1;
  map[b] = 2;
  EXPECT_EQ(map.size(), 1U);
  EXPECT_EQ(map.begin()->second, 2);
}

TEST(Zorid, DiffersInEveryOctetAlone) {
  const zorid_t id{{9, 8, 7, 6}};
  for (int position = 0; position < 4; ++position) {
    zorid_t other = id;
    other.octets[position] ^= 0x80;
    EXPECT_TRUE(id != other);
    EXPECT_FALSE(id == other);
  }
}

// Every pair from a set in which octets differ at each place, by little, by much and across the
// sign bit.
TEST(Zorid, OrdersAsMemcmpAndAsTheBigEndianNumber) {
  std::vector<zorid_t> ids;
  const std::uint8_t values[] = {0, 1, 127, 128, 255};
  for (const std::uint8_t a : values)
    for (const std::uint8_t b : values)
      for (const std::uint8_t c : values)
        for (const std::uint8_t d : values) ids.push_back({{a, b, c, d}});
  for (const zorid_t& a : ids) {
    const std::uint32_t number = (std::uint32_t{a.octets[0]} << 24) |
                                 (std::uint32_t{a.octets[1]} << 16) |
                                 (std::uint32_t{a.octets[2]} << 8) | a.octets[3];
    ASSERT_EQ(ZoridNumber(a), number);
    for (const zorid_t& b : ids) {
      ASSERT_EQ(Order(a, b), Sign(std::memcmp(a.octets, b.octets, 4)))
          << zorl2_test::Dotted(a) << " and " << zorl2_test::Dotted(b);
      ASSERT_EQ(a == b, Order(a, b) == 0);
      ASSERT_EQ(std::less<zorid_t>()(a, b), a < b);
    }
  }
}

TEST(Zorid, AMapIteratesFromTheSmallestToTheLargest) {
  const std::vector<zorid_t> ascending = {
      {{0, 0, 0, 0}}, {{0, 0, 0, 255}}, {{0, 0, 1, 0}},   {{0, 128, 0, 0}},   {{0, 255, 255, 255}},
      {{1, 0, 0, 0}}, {{127, 0, 0, 1}}, {{128, 0, 0, 0}}, {{254, 255, 0, 9}}, {{255, 0, 255, 254}},
  };
  std::vector<zorid_t> shuffled = ascending;
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(20240607));
  std::map<zorid_t, bool> map;
  for (const zorid_t& id : shuffled) map[id] = true;
  std::vector<zorid_t> visited;
  for (const auto& [id, state] : map) visited.push_back(id);
  EXPECT_EQ(visited, ascending);
}

}  // namespace
