// The two exceptions of the translation tables, checked by exact type and text.
#pragma once

#include <gtest/gtest.h>

#include <boost/exception/exception.hpp>
#include <boost/throw_exception.hpp>
#include <exception>
#include <stdexcept>
#include <typeinfo>

namespace zorl2_test {

// Runs the call, which must throw an Exception, no class derived from it, with this text, and write
// nothing to the standard streams.
template <typename Exception, typename Call>
void ExpectThrowsExactly(const char* text, const Call& call) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  try {
    call();
    ADD_FAILURE() << "threw nothing, expected \"" << text << "\"";
  } catch (const std::exception& error) {
    EXPECT_EQ(typeid(error), typeid(Exception)) << typeid(error).name();
    EXPECT_STREQ(error.what(), text);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

// The bimap tables: the seven enumerations nested in the native entry.
template <typename Call>
void ExpectInvalidKey(const Call& call) {
  ExpectThrowsExactly<boost::wrapexcept<std::out_of_range>>("bimap<>: invalid key", call);
}

// The map tables: the interface categories, and the protocols of the state signals.
template <typename Call>
void ExpectMapAt(const Call& call) {
  ExpectThrowsExactly<std::out_of_range>("map::at", call);
}

}  // namespace zorl2_test
