// What the fallback host functions print.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "native/pvex_fault.h"
#include "tests/convert/signals.h"

namespace pb = zorl2::protobuf;

extern "C" __attribute__((noinline)) void zorl2_test_caller_of_the_backtrace() {
  pvex_print_backtrace();
  // Without a statement after it, the call would become a jump and leave no frame.
  __asm__ volatile("");
}

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST(HostFunctions, AFaultIsOneLineOnStandardError) {
  testing::internal::CaptureStderr();
  const int result = pvex_gen_fault(1, "Convert", "convert/some_source.cpp", 64, "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "fault: severity 1 in Convert at convert/some_source.cpp:64\n");
  EXPECT_EQ(result, 0);
}

TEST(HostFunctions, TheMessageOfAFaultFollowsAColon) {
  testing::internal::CaptureStderr();
  pvex_gen_fault(-3, "f", "g.c", 2147483647, "out of cheese");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "fault: severity -3 in f at g.c:2147483647: out of cheese\n");
}

TEST(HostFunctions, TheBacktraceStartsWithItsCaller) {
  testing::internal::CaptureStderr();
  zorl2_test_caller_of_the_backtrace();
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_THAT(printed, StartsWith("backtrace:\n 0# "));
  EXPECT_THAT(printed.substr(0, printed.find(" 1# ")),
              HasSubstr("zorl2_test_caller_of_the_backtrace"));
  EXPECT_THAT(printed, AllOf(HasSubstr("\n 2# "), EndsWith("\n")));
}

void ConvertMalformed() {
  pb::BlockStateSync message;
  message.set_blockprotocol(pb::STP);
  auto& info = *message.add_intfs();
  info.mutable_zorid()->add_value(1);
  info.set_state(pb::BLOCK_STATE_BLOCK);
  BlockStateInfoSyncSignal signal;
  BlockStateConverter().Convert(message, signal);
}

// A program that links only the library and these functions reports why it was terminated.
TEST(HostFunctionsDeathTest, AMalformedStateSignalIsReportedOnStandardError) {
  EXPECT_EXIT(
      ConvertMalformed(), testing::ExitedWithCode(1),
      AllOf(StartsWith("backtrace:\n 0# "), HasSubstr("BlockStateConverter::Convert"),
            EndsWith("\nfault: severity 1 in Convert at convert/intf_state_converter.cpp:100\n")));
}

}  // namespace
