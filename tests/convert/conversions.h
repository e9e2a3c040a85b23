// Helpers for the tests of the converters.
#pragma once

#include <gmock/gmock.h>
#include <google/protobuf/message.h>

#include <cstdint>
#include <initializer_list>

#include "native/zorid.h"
#include "tests/support/native_matchers.h"
#include "zorid.pb.h"

namespace zorl2_test {

// A value that no enumeration lists. A message can hold one only if code without assertions sets
// it, so the sources that do are compiled with NDEBUG. The library keeps its own assertions.
template <typename Enum>
Enum Unlisted() {
  return static_cast<Enum>(99);
}

// Appends values to the message.
inline void Append(zorl2::protobuf::Zorid& message, std::initializer_list<std::uint32_t> values) {
  for (const std::uint32_t value : values) message.add_value(value);
}

// A field that this version of the schema does not know.
template <typename Message>
void AddUnknownField(Message& message) {
  message.mutable_unknown_fields()->AddVarint(1000, 77);
}

// Returns the result of the call, which must write nothing to standard output or standard error.
template <typename Call>
bool Silently(const Call& call) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const bool result = call();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  return result;
}

// Expects that the conversion returns false, writes nothing to the standard streams and leaves the
// record unchanged.
template <typename Converter, typename Message, typename Record>
void ExpectRejected(const Message& message, const Record& before) {
  Record record = before;
  EXPECT_FALSE(Silently([&] { return Converter().Convert(message, record); }))
      << message.ShortDebugString();
  EXPECT_THAT(record, EqualsNative(before)) << message.ShortDebugString();
}

}  // namespace zorl2_test
