// The line that each of the four fault sites reports. Two of them cannot be reached in the library,
// so its source is compiled into this program with an identifier conversion that takes the all-zero
// identifier and the message without values, and fails for all others.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/state/fault_recorder.h"
#include "tests/state/signals.h"

namespace pb = zorl2::protobuf;

// Declared in refusing/convert/internal/zorid_mapping.h, for the converters' source alone.
namespace zorl2_mapping {
bool ToNative(const pb::Zorid& message, zorid_t& id);
bool ToMessage(const zorid_t& id, pb::Zorid& message);

bool ToNative(const pb::Zorid& message, zorid_t&) { return message.value_size() == 0; }
bool ToMessage(const zorid_t& id, pb::Zorid&) { return id == zorid_t{}; }
}  // namespace zorl2_mapping

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

template <typename Case>
class FaultSites : public testing::Test {};

using Cases = testing::Types<Shut, Block>;
TYPED_TEST_SUITE(FaultSites, Cases);

// Nothing to convert, nothing to fail.
TYPED_TEST(FaultSites, ASignalWithoutInterfacesIsNoFault) {
  typename TypeParam::Signal signal;
  typename TypeParam::Message message;
  EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
  EXPECT_TRUE(typename TypeParam::Converter().Convert(message, signal));
}

TYPED_TEST(FaultSites, AnIdentifierThatConvertsIsNoFaultAndItsStateArrives) {
  typename TypeParam::Signal signal;
  TypeParam::States(signal)[zorid_t{}] = TypeParam::kOn;
  typename TypeParam::Message message;
  EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
  // Once more, over elements that are there already.
  EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
  ASSERT_EQ(message.intfs_size(), 1);
  EXPECT_TRUE(message.intfs(0).has_zorid());
  EXPECT_EQ(message.intfs(0).state(), TypeParam::kMessageOn);

  typename TypeParam::Signal received;
  EXPECT_TRUE(typename TypeParam::Converter().Convert(message, received));
  EXPECT_EQ(TypeParam::States(received), TypeParam::States(signal));
}

}  // namespace
