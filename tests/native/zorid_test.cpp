#include "native/zorid.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <type_traits>
#include <vector>

#include "tests/support/native_text.h"

namespace {

TEST(Zorid, IsFourOctetsCopiedByValue) {
  static_assert(sizeof(zorid_t) == 4 && alignof(zorid_t) == 1);
  static_assert(std::is_trivially_copyable_v<zorid_t> && std::is_standard_layout_v<zorid_t>);
  const zorid_t id{{1, 2, 3, 200}};
  const std::uint8_t octets[] = {1, 2, 3, 200};
  EXPECT_EQ(std::memcmp(&id, octets, 4), 0);
}

TEST(Zorid, EqualOctetsAreOneKeyOfAMap) {
  std::map<zorid_t, int> map;
  map[{{9, 8, 7, 6}}] = 1;
  map[{{9, 8, 7, 6}}] = 2;
  map[{{0, 255, 255, 255}}] = 3;
  EXPECT_EQ(map.size(), 2U);
  EXPECT_EQ(map.begin()->second, 3);
}

// Compares every pair of a set in which the octets at each place differ by little, by much and
// across the sign bit.
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
      const int order = std::memcmp(a.octets, b.octets, 4);
      SCOPED_TRACE(zorl2_test::Text(a) + " and " + zorl2_test::Text(b));
      ASSERT_EQ(a < b, order < 0);
      ASSERT_EQ(a == b, order == 0);
      ASSERT_EQ(a != b, order != 0);
      ASSERT_EQ(std::less<zorid_t>()(a, b), order < 0);
    }
  }
}

}  // namespace
