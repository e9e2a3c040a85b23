// The line that each of the four fault sites reports. Two of them cannot be reached in the library,
// so its source is compiled into this program with an identifier conversion that always fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/state/fault_recorder.h"
#include "tests/state/signals.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::Eq;
using testing::ExitedWithCode;
using zorl2_test::Add;
using zorl2_test::Block;
using zorl2_test::EmptyMessage;
using zorl2_test::ExpectFault;
using zorl2_test::FaultReport;
using zorl2_test::Id;
using zorl2_test::Shut;

template <typename Case>
void MessageToNative() {
  auto message = EmptyMessage<Case>(pb::STP);
  Add<Case>(message, Id(1, 2, 3, 4), true);
  typename Case::Signal signal;
  ExpectFault();
  typename Case::Converter().Convert(message, signal);
}

template <typename Case>
void NativeToMessage() {
  typename Case::Signal signal;
  Case::States(signal)[Id(1, 2, 3, 4)] = Case::kOn;
  typename Case::Message message;
  ExpectFault();
  typename Case::Converter().Convert(signal, message);
}

TEST(FaultSitesDeathTest, Shut_MessageToNativeReportsLine64) {
  EXPECT_EXIT(MessageToNative<Shut>(), ExitedWithCode(1), Eq(FaultReport(64)));
}

TEST(FaultSitesDeathTest, Shut_NativeToMessageReportsLine80) {
  EXPECT_EXIT(NativeToMessage<Shut>(), ExitedWithCode(1), Eq(FaultReport(80)));
}

TEST(FaultSitesDeathTest, Block_MessageToNativeReportsLine100) {
  EXPECT_EXIT(MessageToNative<Block>(), ExitedWithCode(1), Eq(FaultReport(100)));
}

TEST(FaultSitesDeathTest, Block_NativeToMessageReportsLine116) {
  EXPECT_EXIT(NativeToMessage<Block>(), ExitedWithCode(1), Eq(FaultReport(116)));
}

// Nothing to convert, nothing to fail.
TEST(FaultSites, ASignalWithoutInterfacesIsNoFault) {
  ShutStateInfoSyncSignal signal;
  pb::ShutStateSync message;
  EXPECT_TRUE(ShutStateConverter().Convert(signal, message));
  EXPECT_TRUE(ShutStateConverter().Convert(message, signal));
}

}  // namespace
