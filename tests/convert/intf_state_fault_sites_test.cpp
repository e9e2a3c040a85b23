// The line that each of the four fault sites reports. Two of them cannot be reached in the library,
// so its source is compiled into this program with an identifier conversion that always fails.
#include <gmock/gmock.h>

#include "tests/convert/fault_recorder.h"
#include "tests/convert/signals.h"

namespace pb = zorl2::protobuf;

// Declared in failing/convert/internal/zorid_mapping.h, which the converters' source includes.
namespace zorl2_mapping {
bool ToNative(const pb::Zorid& message, zorid_t& id);
bool ToMessage(const zorid_t& id, pb::Zorid& message);

bool ToNative(const pb::Zorid&, zorid_t&) { return false; }
bool ToMessage(const zorid_t&, pb::Zorid&) { return false; }
}  // namespace zorl2_mapping

// AddressSanitizer must allow that this program defines the converters a second time.
extern "C" const char* __asan_default_options() { return "detect_odr_violation=0"; }

namespace {

using testing::Eq;
using testing::ExitedWithCode;
using zorl2_test::Block;
using zorl2_test::FaultReport;
using zorl2_test::Id;
using zorl2_test::Shut;

template <typename Case>
void MessageToNative() {
  auto message = zorl2_test::EmptyMessage<Case>(pb::STP);
  zorl2_test::Add<Case>(message, Id(1, 2, 3, 4), true);
  typename Case::Signal signal;
  zorl2_test::ExpectFault();
  typename Case::Converter().Convert(message, signal);
}

template <typename Case>
void NativeToMessage() {
  const typename Case::Signal signal{{{Id(1, 2, 3, 4), Case::kOn}}, STP};
  typename Case::Message message;
  zorl2_test::ExpectFault();
  typename Case::Converter().Convert(signal, message);
}

TEST(FaultSitesDeathTest, EachSiteReportsItsLine) {
  EXPECT_EXIT(MessageToNative<Shut>(), ExitedWithCode(1), Eq(FaultReport(64)));
  EXPECT_EXIT(NativeToMessage<Shut>(), ExitedWithCode(1), Eq(FaultReport(80)));
  EXPECT_EXIT(MessageToNative<Block>(), ExitedWithCode(1), Eq(FaultReport(100)));
  EXPECT_EXIT(NativeToMessage<Block>(), ExitedWithCode(1), Eq(FaultReport(116)));
}

}  // namespace
