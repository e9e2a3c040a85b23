// What a malformed identifier in a state signal does to the process. The program defines the host
// functions itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

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

// An element with this many values, alone or behind one that is in order.
template <typename Case>
typename Case::Message Malformed(int values, bool alone) {
  auto message = EmptyMessage<Case>(pb::STP);
  if (!alone) Add<Case>(message, Id(1, 2, 3, 4), true);
  pb::Zorid& zorid = *Add<Case>(message, Id(0, 0, 0, 0), true).mutable_zorid();
  zorid.clear_value();
  for (int value = 0; value < values; ++value) zorid.add_value(9);
  return message;
}

template <typename Case>
void ConvertMalformed(const typename Case::Message& message) {
  ExpectFault();
  typename Case::Signal signal;
  typename Case::Converter().Convert(message, signal);
}

class StateFaultDeathTest : public testing::TestWithParam<std::tuple<int, bool>> {
 protected:
  const int values = std::get<0>(GetParam());
  const bool alone = std::get<1>(GetParam());
};

TEST_P(StateFaultDeathTest, Shut_AMalformedIdentifierEndsTheProcessAfterAReport) {
  EXPECT_EXIT(ConvertMalformed<Shut>(Malformed<Shut>(values, alone)), ExitedWithCode(1),
              Eq(FaultReport(64)));
}

TEST_P(StateFaultDeathTest, Block_AMalformedIdentifierEndsTheProcessAfterAReport) {
  EXPECT_EXIT(ConvertMalformed<Block>(Malformed<Block>(values, alone)), ExitedWithCode(1),
              Eq(FaultReport(100)));
}

INSTANTIATE_TEST_SUITE_P(Counts, StateFaultDeathTest,
                         testing::Combine(testing::Values(0, 1, 3, 5, 8), testing::Bool()));

// Four values are no fault, whatever they are.
TEST(StateFault, FourValuesAreNoFault) {
  ShutStateInfoSyncSignal shut;
  EXPECT_TRUE(ShutStateConverter().Convert(Malformed<Shut>(4, false), shut));
  EXPECT_EQ(shut.shutStates.size(), 2u);
  BlockStateInfoSyncSignal block;
  EXPECT_TRUE(BlockStateConverter().Convert(Malformed<Block>(4, false), block));
  EXPECT_EQ(block.blockStates.size(), 2u);
}

}  // namespace
