#include "convert/zorid_converter.h"

#include <gtest/gtest.h>

namespace pb = zorl2::protobuf;

namespace {

pb::Zorid Message(std::initializer_list<std::uint32_t> values) {
  pb::Zorid message;
  for (const std::uint32_t value : values) message.add_value(value);
  return message;
}

TEST(ZoridConverter, MessageToNative_TakesTheFourValuesInOrder) {
  zorid_t id;
  EXPECT_TRUE(ZORIDConverter().Convert(Message({10, 20, 30, 40}), id));
  EXPECT_EQ(id, (zorid_t{{10, 20, 30, 40}}));
}

}  // namespace
