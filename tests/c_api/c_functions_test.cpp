// The C functions from C++, in the ordinary cases. Under AddressSanitizer this also shows that the
// buffers have their sizes and that nothing is left allocated.
#include <gmock/gmock.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "c_api/intf_entry.h"

namespace {

// The functions are noexcept, so no exception reaches a caller in C.
static_assert(noexcept(init_intf_entry()) && noexcept(destroy_intf_entry(nullptr)));
static_assert(noexcept(init_intf_entry_list(0)) && noexcept(destroy_intf_entry_list(nullptr)));
static_assert(std::is_trivial_v<intf_entry_t> && std::is_standard_layout_v<intf_entry_t>);
static_assert(std::is_trivial_v<intf_entry_list_t> && std::is_standard_layout_v<intf_entry_list_t>);

constexpr char* intf_entry_t::*kBuffers[] = {&intf_entry_t::intf_name, &intf_entry_t::phy_addr,
                                             &intf_entry_t::redundancy_group_phy_addr};
constexpr std::size_t kSizes[] = {64, 32, 32};

// Each buffer is zeroed, has room for its longest text and belongs to no other record.
void UseBuffers(const intf_entry_t& record, std::set<const char*>& seen) {
  for (int i = 0; i < 3; ++i) {
    char* buffer = record.*kBuffers[i];
    ASSERT_NE(buffer, nullptr);
    EXPECT_TRUE(seen.insert(buffer).second);
    EXPECT_EQ(std::string(buffer, kSizes[i]), std::string(kSizes[i], '\0'));
    std::memset(buffer, 'x', kSizes[i] - 1);
    EXPECT_EQ(std::strlen(buffer), kSizes[i] - 1);
  }
}

TEST(SingleRecord, IsZeroWithThreeEmptyBuffers) {
  intf_entry_t* record = init_intf_entry();
  ASSERT_NE(record, nullptr);
  EXPECT_THAT(record->manager_data_1, testing::Each(0));
  EXPECT_THAT(record->manager_data_2, testing::Each(0));
  EXPECT_THAT(record->manager_data_3, testing::Each(0));
  std::set<const char*> seen;
  UseBuffers(*record, seen);
  destroy_intf_entry(&record);
  EXPECT_EQ(record, nullptr);
}

TEST(List, HasTheRequestedRecordsAndDestroyKeepsTheCallersPointer) {
  for (const std::size_t count : {0U, 1U, 3U, 1000U}) {
    intf_entry_list_t* list = init_intf_entry_list(count);
    intf_entry_list_t* const address = list;
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count, count);
    EXPECT_NE(list->entries, nullptr);
    std::set<const char*> seen;
    for (std::size_t i = 0; i < count; ++i) UseBuffers(list->entries[i], seen);
    destroy_intf_entry_list(&list);
    EXPECT_EQ(list, address);
  }
}

// AddressSanitizer reports a buffer that is not released.
TEST(Destroy, SkipsBuffersThatTheCallerSetToNull) {
  for (const auto buffer : kBuffers) {
    intf_entry_t* record = init_intf_entry();
    delete[](record->*buffer);
    record->*buffer = nullptr;
    destroy_intf_entry(&record);
    intf_entry_list_t* list = init_intf_entry_list(2);
    delete[](list->entries[0].*buffer);
    list->entries[0].*buffer = nullptr;
    destroy_intf_entry_list(&list);
  }
}

// The functions share nothing, so any number of threads may call them at once.
TEST(List, ThreadsCreateAndDestroyIndependently) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int round = 0; round < 200; ++round) {
        intf_entry_list_t* list = init_intf_entry_list(5);
        intf_entry_t* record = init_intf_entry();
        std::set<const char*> seen;
        UseBuffers(*record, seen);
        for (int at = 0; at < 5; ++at) UseBuffers(list->entries[at], seen);
        destroy_intf_entry(&record);
        destroy_intf_entry_list(&list);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// Neither function tests its argument. Sanitizers report this fault in their own format.
TEST(DestroyDeathTest, ANullPointerFaults) {
#ifdef ZORL2_SANITIZED
  const auto faulted = [](int status) { return status != 0; };
#else
  const testing::KilledBySignal faulted(SIGSEGV);
#endif
  EXPECT_EXIT(
      {
        intf_entry_t* record = init_intf_entry();
        destroy_intf_entry(&record);
        destroy_intf_entry(&record);
      },
      faulted, "");
  EXPECT_EXIT(
      {
        intf_entry_list_t* list = nullptr;
        destroy_intf_entry_list(&list);
      },
      faulted, "");
}

}  // namespace
