// What a malformed identifier in a state signal does to the process. The program defines the host
// functions itself.
#include <gmock/gmock.h>

#include "tests/convert/fault_recorder.h"
#include "tests/convert/signals.h"

namespace pb = zorl2::protobuf;

namespace {

using zorl2_test::Add;
using zorl2_test::Block;
using zorl2_test::EmptyMessage;
using zorl2_test::Shut;

// Converts a message whose last identifier has this many values.
template <typename Case>
void ConvertValues(int values, bool alone) {
  auto message = EmptyMessage<Case>(pb::STP);
  if (!alone) Add<Case>(message, zorl2_test::Id(1, 2, 3, 4), true);
  pb::Zorid& zorid = *Add<Case>(message, zorl2_test::Id(9, 9, 9, 9), true).mutable_zorid();
  zorid.mutable_value()->Resize(values, 9);
  typename Case::Signal signal;
  zorl2_test::ExpectFault();
  typename Case::Converter().Convert(message, signal);
  std::_Exit(0);
}

template <typename Case>
void ExpectFaultReport(int line) {
  for (const int values : {0, 1, 3, 5, 8}) {
    for (const bool alone : {false, true}) {
      EXPECT_EXIT(ConvertValues<Case>(values, alone), testing::ExitedWithCode(1),
                  testing::Eq(zorl2_test::FaultReport(line)))
          << values << " values";
    }
  }
  EXPECT_EXIT(ConvertValues<Case>(4, false), testing::ExitedWithCode(0), testing::Eq(""));
}

TEST(StateFaultDeathTest, Shut_AMalformedIdentifierIsReportedAndTerminatesTheProcess) {
  ExpectFaultReport<Shut>(64);
}

TEST(StateFaultDeathTest, Block_AMalformedIdentifierIsReportedAndTerminatesTheProcess) {
  ExpectFaultReport<Block>(100);
}

}  // namespace
