#include "convert/zorid_converter.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <initializer_list>

#include "tests/convert/conversions.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

using zorl2_test::EqualsText;

namespace {

// Converts into the identifier 9.9.9.9, expects the given result, and returns the identifier.
zorid_t Converted(std::initializer_list<std::uint32_t> values, bool expected_result) {
  pb::Zorid message;
  zorl2_test::Append(message, values);
  zorl2_test::AddUnknownField(message);
  zorid_t id{{9, 9, 9, 9}};
  EXPECT_EQ(zorl2_test::Silently([&] { return ZORIDConverter().Convert(message, id); }),
            expected_result);
  return id;
}

TEST(ZoridConverter, MessageToNative_KeepsTheOrderAndTheLow8BitsOfEachValue) {
  EXPECT_EQ(Converted({10, 20, 30, 40}, true), (zorid_t{{10, 20, 30, 40}}));
  EXPECT_EQ(Converted({300, 256, 255, 0}, true), (zorid_t{{44, 0, 255, 0}}));
  EXPECT_EQ(Converted({0x1FF, 0xFFFFFFFF, 0x80000001, 0xABCDEF00}, true),
            (zorid_t{{255, 255, 1, 0}}));
}

TEST(ZoridConverter, MessageToNative_WrongCountZeroesTheIdentifier) {
  EXPECT_EQ(Converted({}, false), zorid_t{});
  EXPECT_EQ(Converted({1}, false), zorid_t{});
  EXPECT_EQ(Converted({1, 2}, false), zorid_t{});
  EXPECT_EQ(Converted({1, 2, 3}, false), zorid_t{});
  EXPECT_EQ(Converted({1, 2, 3, 4, 5}, false), zorid_t{});
  EXPECT_EQ(Converted({1, 2, 3, 4, 5, 6, 7, 8}, false), zorid_t{});
}

TEST(ZoridConverter, NativeToMessage_ReplacesTheContentOfTheMessage) {
  pb::Zorid message;
  zorl2_test::Append(message, {7, 7, 7, 7, 7, 7, 7});
  zorl2_test::AddUnknownField(message);
  EXPECT_TRUE(ZORIDConverter().Convert(zorid_t{{1, 2, 3, 4}}, message));
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [1, 2, 3, 4]"));
}

TEST(ZoridConverter, RoundTrip_TheAllZeroIdentifierHasFourValues) {
  pb::Zorid message;
  EXPECT_TRUE(ZORIDConverter().Convert(zorid_t{}, message));
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
  EXPECT_EQ(Converted({0, 0, 0, 0}, true), zorid_t{});
}

// Reuses one converter, message and identifier for all values.
TEST(ZoridConverter, RoundTrip_PreservesEveryOctetAtEachPlace) {
  ZORIDConverter converter;
  pb::Zorid message;
  zorid_t back;
  for (int place = 0; place < 4; ++place) {
    for (int value = 0; value < 256; ++value) {
      zorid_t id{{1, 2, 3, 4}};
      id.octets[place] = static_cast<std::uint8_t>(value);
      ASSERT_TRUE(converter.Convert(id, message));
      ASSERT_EQ(message.value_size(), 4);
      ASSERT_EQ(message.value(place), static_cast<std::uint32_t>(value));
      ASSERT_TRUE(converter.Convert(message, back));
      ASSERT_EQ(back, id);
    }
  }
}

}  // namespace
