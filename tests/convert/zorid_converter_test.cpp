#include "convert/zorid_converter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>

#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"

namespace pb = zorl2::protobuf;

using zorl2_test::EqualsMessage;
using zorl2_test::EqualsText;

namespace {

pb::Zorid Message(std::initializer_list<std::uint32_t> values) {
  pb::Zorid message;
  for (const std::uint32_t value : values) message.add_value(value);
  return message;
}

// What an identifier that was 9.9.9.9 holds after a conversion with the given result.
zorid_t Converted(const pb::Zorid& message, bool expected_result) {
  zorid_t id{{9, 9, 9, 9}};
  EXPECT_EQ(ZORIDConverter().Convert(message, id), expected_result);
  return id;
}

TEST(ZoridConverter, MessageToNative_TakesTheFourValuesInOrder) {
  EXPECT_EQ(Converted(Message({10, 20, 30, 40}), true), (zorid_t{{10, 20, 30, 40}}));
}

TEST(ZoridConverter, MessageToNative_KeepsTheLow8BitsOfEachValue) {
  EXPECT_EQ(Converted(Message({300, 256, 255, 0}), true), (zorid_t{{44, 0, 255, 0}}));
  EXPECT_EQ(Converted(Message({0x1FF, 0xFFFFFFFF, 0x80000001, 0xABCDEF00}), true),
            (zorid_t{{255, 255, 1, 0}}));
}

TEST(ZoridConverter, MessageToNative_WrongCountZeroesTheIdentifier) {
  const zorid_t zero{{0, 0, 0, 0}};
  EXPECT_EQ(Converted(Message({}), false), zero);
  EXPECT_EQ(Converted(Message({1}), false), zero);
  EXPECT_EQ(Converted(Message({1, 2}), false), zero);
  EXPECT_EQ(Converted(Message({1, 2, 3}), false), zero);
  EXPECT_EQ(Converted(Message({1, 2, 3, 4, 5}), false), zero);
  EXPECT_EQ(Converted(Message({1, 2, 3, 4, 5, 6, 7, 8}), false), zero);
}

TEST(ZoridConverter, MessageToNative_UnknownFieldsDoNotMatter) {
  pb::Zorid message = Message({1, 2, 3, 4});
  message.mutable_unknown_fields()->AddVarint(7, 1);
  EXPECT_EQ(Converted(message, true), (zorid_t{{1, 2, 3, 4}}));
}

TEST(ZoridConverter, NativeToMessage_ReplacesWhatTheMessageHeld) {
  pb::Zorid message = Message({7, 7, 7, 7, 7, 7, 7});
  message.mutable_unknown_fields()->AddVarint(7, 1);
  EXPECT_TRUE(ZORIDConverter().Convert(zorid_t{{1, 2, 3, 4}}, message));
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [1, 2, 3, 4]"));
}

TEST(ZoridConverter, NativeToMessage_WidensWithoutSign) {
  pb::Zorid message;
  EXPECT_TRUE(ZORIDConverter().Convert(zorid_t{{127, 128, 254, 255}}, message));
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [127, 128, 254, 255]"));
}

TEST(ZoridConverter, TheAllZeroIdentifierIsAnIdentifierLikeAnyOther) {
  pb::Zorid message;
  EXPECT_TRUE(ZORIDConverter().Convert(zorid_t{}, message));
  EXPECT_THAT(message, EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
  EXPECT_EQ(Converted(message, true), zorid_t{});
}

TEST(ZoridConverter, EveryOctetValueSurvivesTheWayThereAndBackAtEachPlace) {
  ZORIDConverter converter;
  pb::Zorid message;
  for (int place = 0; place < 4; ++place) {
    for (int value = 0; value < 256; ++value) {
      zorid_t id{{1, 2, 3, 4}};
      id.octets[place] = static_cast<std::uint8_t>(value);
      ASSERT_TRUE(converter.Convert(id, message));
      ASSERT_EQ(message.value(place), static_cast<std::uint32_t>(value));
      zorid_t back{{9, 9, 9, 9}};
      ASSERT_TRUE(converter.Convert(message, back));
      ASSERT_EQ(back, id);
    }
  }
}

// One message and one identifier that were used before do not show through.
TEST(ZoridConverter, OneConverterServesAnyNumberOfCalls) {
  ZORIDConverter converter;
  zorid_t id;
  EXPECT_TRUE(converter.Convert(Message({1, 2, 3, 4}), id));
  EXPECT_FALSE(converter.Convert(Message({5}), id));
  EXPECT_TRUE(converter.Convert(Message({6, 7, 8, 9}), id));
  EXPECT_EQ(id, (zorid_t{{6, 7, 8, 9}}));
}

}  // namespace
