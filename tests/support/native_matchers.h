// A matcher and a printer for native records, which have neither an equality nor a printing
// function.
#pragma once

#include <gmock/gmock.h>

#include <ostream>
#include <string>

#include "tests/support/native_text.h"

namespace zorl2_test {

template <typename Record>
std::string NativeDifference(const Record& expected, const Record& actual) {
  return TextDifference(Text(expected), Text(actual));
}

// EXPECT_THAT(actual, EqualsNative(expected)): the message of a failure is the difference.
MATCHER_P(EqualsNative, expected, negation ? "differs from the record" : "equals the record") {
  const std::string difference = NativeDifference(expected, arg);
  if (!difference.empty()) *result_listener << "\n" << difference;
  return difference.empty();
}

}  // namespace zorl2_test

template <typename Record>
auto operator<<(std::ostream& out, const Record& record)
    -> decltype(out << zorl2_test::Text(record)) {
  return out << zorl2_test::Text(record);
}
