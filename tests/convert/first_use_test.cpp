// The first use of every translation table, from many threads at once. In an executable of its own
// and in one test, so that no table has been used before.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "convert/intf_entry_converter.h"
#include "tests/convert/enum_rows.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"

namespace pb = zorl2::protobuf;

namespace {

constexpr int kThreads = 16;

// Each returns whether the table answered as it should.
using Use = std::function<bool()>;

template <typename Call>
bool Refuses(const Call& call, const char* text) {
  try {
    call();
  } catch (const std::out_of_range& error) {
    return std::string(error.what()) == text;
  }
  return false;
}

// Both directions, with the last member and with the number behind it.
template <typename Row>
void AddUses(std::vector<Use>& uses) {
  uses.push_back([] {
    typename Row::Native native{};
    IntfEntryConvertHelperProtobuf helper;
    (helper.*Row::kToNative)(static_cast<typename Row::Message>(Row::kCount - 1), native);
    const auto outside = static_cast<typename Row::Message>(Row::kCount);
    return native == Row::kCount - 1 &&
           Refuses([&] { (helper.*Row::kToNative)(outside, native); }, "bimap<>: invalid key");
  });
  uses.push_back([] {
    typename Row::Message message{};
    IntfEntryConvertHelperZOR helper;
    (helper.*Row::kToMessage)(static_cast<typename Row::Native>(Row::kCount - 1), message);
    const auto outside = static_cast<typename Row::Native>(Row::kCount);
    return message == Row::kCount - 1 &&
           Refuses([&] { (helper.*Row::kToMessage)(outside, message); }, "bimap<>: invalid key");
  });
}

std::vector<Use> AllUses() {
  std::vector<Use> uses;
  AddUses<zorl2_test::AdminStatusRow>(uses);
  AddUses<zorl2_test::OperationalStatusRow>(uses);
  AddUses<zorl2_test::LinkStatusRow>(uses);
  AddUses<zorl2_test::EthernetSpeedRow>(uses);
  AddUses<zorl2_test::DuplexModeRow>(uses);
  AddUses<zorl2_test::InterfaceTypeRow>(uses);
  AddUses<zorl2_test::VlanTypeRow>(uses);
  // The two category tables.
  uses.push_back([] {
    IntfEntry entry;
    return IntfEntryConverter().Convert(zorl2_test::FullEntryMessage(), entry) &&
           zorl2_test::NativeDifference(zorl2_test::FullEntry(), entry).empty();
  });
  uses.push_back([] {
    pb::IntfEntry message;
    return IntfEntryConverter().Convert(zorl2_test::FullEntry(), message) &&
           zorl2_test::MessageDifference(zorl2_test::FullEntryMessage(), message).empty();
  });
  uses.push_back([] {
    IntfEntryBuilder builder(zorl2_test::FullEntry());
    builder.setInterfaceCategory(static_cast<InterfaceCategory>(5));
    pb::IntfEntry message;
    return Refuses([&] { IntfEntryConverter().Convert(builder.Build(), message); }, "map::at");
  });
  return uses;
}

TEST(FirstUse, OfEveryTableFromManyThreadsAtOnce) {
  const std::vector<Use> uses = AllUses();
  ASSERT_EQ(uses.size(), 17U);
  std::atomic<int> ready{0};
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      ++ready;
      while (ready < kThreads) std::this_thread::yield();
      // Four threads each start at the same table, the others elsewhere.
      const std::size_t start = static_cast<std::size_t>(number % 4) * 4;
      for (std::size_t i = 0; i < uses.size(); ++i) {
        if (!uses[(start + i) % uses.size()]()) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
