// The C functions from C++, in the ordinary cases. Under AddressSanitizer this also shows that the
// buffers have their sizes and that nothing is left allocated.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "c_api/intf_entry.h"

namespace {

// No exception reaches a caller in C: the compiler itself says so.
static_assert(noexcept(init_intf_entry()));
static_assert(noexcept(destroy_intf_entry(nullptr)));
static_assert(noexcept(init_intf_entry_list(0)));
static_assert(noexcept(destroy_intf_entry_list(nullptr)));

static_assert(std::is_trivial_v<intf_entry_t> && std::is_standard_layout_v<intf_entry_t>);
static_assert(std::is_trivial_v<intf_entry_list_t> && std::is_standard_layout_v<intf_entry_list_t>);
static_assert(sizeof(intf_entry_t) == 104);
static_assert(offsetof(intf_entry_t, manager_data_1) == 0);
static_assert(offsetof(intf_entry_t, intf_name) == 8);
static_assert(offsetof(intf_entry_t, phy_addr) == 16);
static_assert(offsetof(intf_entry_t, manager_data_2) == 24);
static_assert(offsetof(intf_entry_t, redundancy_group_phy_addr) == 32);
static_assert(offsetof(intf_entry_t, manager_data_3) == 40);
// The alignment behind the first two would hide a lost octet from the offsets.
static_assert(sizeof(intf_entry_t::manager_data_1) == 8);
static_assert(sizeof(intf_entry_t::manager_data_2) == 8);
static_assert(sizeof(intf_entry_t::manager_data_3) == 64);
static_assert(sizeof(intf_entry_list_t) == 16);
static_assert(offsetof(intf_entry_list_t, entries) == 0);
static_assert(offsetof(intf_entry_list_t, count) == 8);
static_assert(std::is_same_v<decltype(intf_entry_list_t::count), std::uint32_t>);
static_assert(
    std::is_same_v<decltype(&init_intf_entry_list), intf_entry_list_t* (*)(std::size_t) noexcept>);

void ExpectEmptyBuffers(const intf_entry_t& record) {
  ASSERT_NE(record.intf_name, nullptr);
  ASSERT_NE(record.phy_addr, nullptr);
  ASSERT_NE(record.redundancy_group_phy_addr, nullptr);
  EXPECT_EQ(std::string(record.intf_name, 64), std::string(64, '\0'));
  EXPECT_EQ(std::string(record.phy_addr, 32), std::string(32, '\0'));
  EXPECT_EQ(std::string(record.redundancy_group_phy_addr, 32), std::string(32, '\0'));
}

// Texts of every length that the buffers have room for.
void FillBuffers(const intf_entry_t& record) {
  std::memset(record.intf_name, 'n', 63);
  std::memset(record.phy_addr, 'p', 31);
  std::memset(record.redundancy_group_phy_addr, 'g', 31);
  EXPECT_EQ(std::strlen(record.intf_name), 63u);
  EXPECT_EQ(std::strlen(record.phy_addr), 31u);
  EXPECT_EQ(std::strlen(record.redundancy_group_phy_addr), 31u);
}

// The pointers of a record that no caller could tell from each other if two of them were one.
void CollectBuffers(const intf_entry_t& record, std::vector<const char*>& buffers) {
  buffers.insert(buffers.end(),
                 {record.intf_name, record.phy_addr, record.redundancy_group_phy_addr});
}

TEST(SingleRecord, IsZeroThroughoutWithThreeEmptyBuffers) {
  intf_entry_t* record = init_intf_entry();
  ASSERT_NE(record, nullptr);
  EXPECT_THAT(record->manager_data_1, testing::Each(0));
  EXPECT_THAT(record->manager_data_2, testing::Each(0));
  EXPECT_THAT(record->manager_data_3, testing::Each(0));
  ExpectEmptyBuffers(*record);
  FillBuffers(*record);
  destroy_intf_entry(&record);
}

TEST(SingleRecord, DestroyingItSetsTheCallersPointerToNull) {
  intf_entry_t* record = init_intf_entry();
  destroy_intf_entry(&record);
  EXPECT_EQ(record, nullptr);
}

// A buffer given up by the caller: AddressSanitizer would report one that is not released.
TEST(SingleRecord, ABufferSetToNullIsPassedOver) {
  for (char* intf_entry_t::*const buffer : {&intf_entry_t::intf_name, &intf_entry_t::phy_addr,
                                            &intf_entry_t::redundancy_group_phy_addr}) {
    intf_entry_t* record = init_intf_entry();
    delete[](record->*buffer);
    record->*buffer = nullptr;
    destroy_intf_entry(&record);
    EXPECT_EQ(record, nullptr);
  }
}

TEST(List, HoldsAsManyRecordsAsAskedFor) {
  for (const std::size_t count : {0U, 1U, 3U, 1000U}) {
    intf_entry_list_t* list = init_intf_entry_list(count);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count, count);
    EXPECT_NE(list->entries, nullptr);
    std::vector<const char*> buffers;
    for (std::size_t i = 0; i < count; ++i) {
      ExpectEmptyBuffers(list->entries[i]);
      FillBuffers(list->entries[i]);
      CollectBuffers(list->entries[i], buffers);
    }
    std::sort(buffers.begin(), buffers.end());
    EXPECT_EQ(std::adjacent_find(buffers.begin(), buffers.end()), buffers.end());
    EXPECT_EQ(buffers.size(), 3 * count);
    destroy_intf_entry_list(&list);
  }
}

TEST(List, DestroyingItLeavesTheCallersPointerAsItWas) {
  for (const std::size_t count : {0U, 3U}) {
    intf_entry_list_t* list = init_intf_entry_list(count);
    intf_entry_list_t* const address = list;
    destroy_intf_entry_list(&list);
    EXPECT_EQ(list, address);
  }
}

TEST(List, ABufferSetToNullIsPassedOver) {
  intf_entry_list_t* list = init_intf_entry_list(3);
  ASSERT_NE(list, nullptr);
  delete[] list->entries[0].intf_name;
  list->entries[0].intf_name = nullptr;
  delete[] list->entries[1].phy_addr;
  list->entries[1].phy_addr = nullptr;
  delete[] list->entries[2].redundancy_group_phy_addr;
  list->entries[2].redundancy_group_phy_addr = nullptr;
  destroy_intf_entry_list(&list);
}

#ifndef ZORL2_SANITIZED  // The sanitizers end the process instead of throwing.
// More than fits into one array, whatever memory the machine has.
TEST(List, ACountThatNoArrayCanHaveGivesNull) {
  for (const std::size_t count : {std::size_t{1} << 57, std::size_t{1} << 63, ~std::size_t{0},
                                  PTRDIFF_MAX / sizeof(intf_entry_t) + 1}) {
    EXPECT_EQ(init_intf_entry_list(count), nullptr) << count;
  }
}
#endif

// The functions share nothing, so any number of threads may call them at once.
TEST(List, RecordsAndListsOfDifferentThreadsDoNotMeet) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int round = 0; round < 200; ++round) {
        intf_entry_list_t* list = init_intf_entry_list(5);
        intf_entry_t* record = init_intf_entry();
        ExpectEmptyBuffers(*record);
        FillBuffers(*record);
        for (int at = 0; at < 5; ++at) FillBuffers(list->entries[at]);
        destroy_intf_entry(&record);
        destroy_intf_entry_list(&list);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// Neither function tests its argument. The sanitizers report the same fault in their own words.
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
