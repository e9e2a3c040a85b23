// What the C functions allocate and release, and what they do after an allocation failure.
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "c_api/intf_entry.h"
#include "tests/support/allocations.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::KilledBySignal;
using zorl2_test::EventAt;
using zorl2_test::EventCount;
using zorl2_test::Events;
using zorl2_test::Failing;
using zorl2_test::kPattern;
using zorl2_test::kUnlimited;
using zorl2_test::Watch;

intf_entry_t* NewRecord(long granted = kUnlimited) {
  const Watch watch;
  const Failing failing(granted);
  return init_intf_entry();
}

intf_entry_list_t* NewList(std::size_t count, long granted = kUnlimited) {
  const Watch watch;
  const Failing failing(granted);
  return init_intf_entry_list(count);
}

bool IsZero(const char* buffer, std::size_t size) {
  return std::all_of(buffer, buffer + size, [](char c) { return c == 0; });
}

void ExpectEmptyBuffers(const intf_entry_t& record) {
  EXPECT_TRUE(IsZero(record.intf_name, 64));
  EXPECT_TRUE(IsZero(record.phy_addr, 32));
  EXPECT_TRUE(IsZero(record.redundancy_group_phy_addr, 32));
}

void AddBuffers(const intf_entry_t& record, std::vector<void*>& memory) {
  memory.insert(memory.end(),
                {record.intf_name, record.phy_addr, record.redundancy_group_phy_addr});
}

// Expects that the watched call released this memory, in this order.
void ExpectReleased(const std::vector<void*>& memory) {
  ASSERT_EQ(EventCount(), static_cast<int>(memory.size()));
  for (std::size_t i = 0; i < memory.size(); ++i) {
    EXPECT_EQ(EventAt(static_cast<int>(i)).memory, memory[i]) << i;
  }
}

// New memory is full of a pattern, so a zero byte was written by the library.
TEST(SingleRecord, IsOneZeroedAllocationAndThreeBuffers) {
  intf_entry_t* record = NewRecord();
  EXPECT_THAT(Events(), ElementsAre("new nothrow 104", "new[] nothrow 64", "new[] nothrow 32",
                                    "new[] nothrow 32"));
  EXPECT_EQ(record, EventAt(0).memory);
  EXPECT_EQ(record->intf_name, EventAt(1).memory);
  EXPECT_EQ(record->phy_addr, EventAt(2).memory);
  EXPECT_EQ(record->redundancy_group_phy_addr, EventAt(3).memory);
  EXPECT_THAT(record->manager_data_1, Each(0));
  EXPECT_THAT(record->manager_data_2, Each(0));
  EXPECT_THAT(record->manager_data_3, Each(0));
  ExpectEmptyBuffers(*record);
  std::vector<void*> memory;
  AddBuffers(*record, memory);
  memory.push_back(record);
  {
    const Watch watch;
    destroy_intf_entry(&record);
  }
  EXPECT_THAT(Events(), ElementsAre("delete[]", "delete[]", "delete[]", "delete"));
  ExpectReleased(memory);
}

// The allocation of the record fails, then that of each of its buffers.
TEST(SingleRecordDeathTest, AnAllocationFailureIsAnInvalidMemoryAccess) {
  for (long granted = 0; granted < 4; ++granted) {
    EXPECT_EXIT(NewRecord(granted), KilledBySignal(SIGSEGV), "") << granted;
  }
}

// The records of a list are not zeroed.
TEST(List, IsAHeaderAnArrayAndThreeBuffersForEachRecord) {
  intf_entry_list_t* list = NewList(2);
  EXPECT_THAT(Events(), ElementsAre("new 16", "new[] 208", "new[] nothrow 64", "new[] nothrow 32",
                                    "new[] nothrow 32", "new[] nothrow 64", "new[] nothrow 32",
                                    "new[] nothrow 32"));
  EXPECT_EQ(list, EventAt(0).memory);
  EXPECT_EQ(list->entries, EventAt(1).memory);
  std::vector<void*> memory;
  for (int i = 0; i < 2; ++i) {
    const intf_entry_t& record = list->entries[i];
    EXPECT_THAT(record.manager_data_1, Each(kPattern));
    EXPECT_THAT(record.manager_data_2, Each(kPattern));
    EXPECT_THAT(record.manager_data_3, Each(kPattern));
    ExpectEmptyBuffers(record);
    AddBuffers(record, memory);
  }
  memory.insert(memory.end(), {list->entries, list});
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  EXPECT_THAT(Events(), ElementsAre("delete[]", "delete[]", "delete[]", "delete[]", "delete[]",
                                    "delete[]", "delete[]", "delete"));
  ExpectReleased(memory);
}

// The last count does not fit 16 bits. Every allocation beyond the promised ones fails.
TEST(List, ReleasesEverything) {
  const long before = zorl2_test::allocations.live;
  for (const std::size_t count : {0, 1, 3, 1000, 70000}) {
    const auto promised = static_cast<long>(2 + 3 * count);
    intf_entry_list_t* list = nullptr;
    {
      const Failing failing(promised);
      list = init_intf_entry_list(count);
    }
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count, count);
    EXPECT_NE(list->entries, nullptr);
    EXPECT_EQ(zorl2_test::allocations.live, before + promised);
    destroy_intf_entry_list(&list);
    EXPECT_EQ(zorl2_test::allocations.live, before);
  }
}

TEST(Destroy, SkipsBuffersThatTheCallerSetToNullAndReleasesTheOthers) {
  intf_entry_t* record = NewRecord();
  intf_entry_list_t* list = NewList(2);
  delete[] record->intf_name;
  record->intf_name = nullptr;
  delete[] list->entries[0].phy_addr;
  list->entries[0].phy_addr = nullptr;
  const Watch watch;
  destroy_intf_entry(&record);
  destroy_intf_entry_list(&list);
  // Two buffers and the record; five buffers, the array and the header.
  EXPECT_EQ(EventCount(), 3 + 7);
}

TEST(Destroy, AListWhoseEntriesAreNullReleasesItsHeader) {
  intf_entry_list_t* list = NewList(0);
  delete[] list->entries;
  list->entries = nullptr;
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  EXPECT_THAT(Events(), ElementsAre("delete"));
}

TEST(List, WithoutAHeaderOrAnArrayIsNullAndReleasesEverything) {
  EXPECT_EQ(NewList(3, 0), nullptr);
  EXPECT_EQ(EventCount(), 0);
  for (const std::size_t count : {0, 1, 3, 1000}) {
    EXPECT_EQ(NewList(count, 1), nullptr);
    EXPECT_THAT(Events(), ElementsAre("new 16", "delete"));
  }
}

// Counts that do not fit into one array or into the memory of any machine.
TEST(List, ACountThatIsTooLargeIsNullAndReleasesTheHeader) {
  for (const std::size_t count : {std::size_t{1} << 57, std::size_t{1} << 63, ~std::size_t{0},
                                  PTRDIFF_MAX / sizeof(intf_entry_t) + 1,
                                  PTRDIFF_MAX / sizeof(intf_entry_t), std::size_t{1} << 56}) {
    EXPECT_EQ(NewList(count), nullptr) << count;
    EXPECT_THAT(Events(), ElementsAre("new 16", "delete"));
  }
}

// Header and array, then some of the nine buffers.
TEST(ListDeathTest, AnAllocationFailureOfABufferIsAnInvalidMemoryAccess) {
  for (long buffers = 0; buffers < 9; ++buffers) {
    EXPECT_EXIT(NewList(3, 2 + buffers), KilledBySignal(SIGSEGV), "") << buffers;
  }
}

// More records than 32 bits count: an array of 2^32 + 3 records, of which only the first page can
// be used.
constexpr std::size_t kBeyond32Bits = (std::size_t{1} << 32) + 3;

void* MapArray() {
  void* memory = mmap(nullptr, kBeyond32Bits * sizeof(intf_entry_t), PROT_NONE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  const bool usable = memory != MAP_FAILED && mprotect(memory, 4096, PROT_READ | PROT_WRITE) == 0;
  return usable ? memory : nullptr;
}

// Once four records have their buffers, checks the header and exits with the result.
void* ExitAfterFourRecords(const zorl2_test::Event& event) {
  if (EventCount() == 1) return MapArray();
  if (EventCount() < 2 + 4 * 3) return nullptr;
  const auto* list = static_cast<const intf_entry_list_t*>(EventAt(0).memory);
  const bool as_promised =
      list->count == 3 && list->entries == EventAt(1).memory && event.size == ZORL2_INTF_NAME_SIZE;
  _exit(as_promised ? 0 : 1);
}

TEST(ListDeathTest, KeepsTheLow32BitsOfTheCountAndInitializesEveryRecord) {
  void* const probe = MapArray();
  if (probe == nullptr) GTEST_SKIP() << "the machine maps no array of this size";
  munmap(probe, kBeyond32Bits * sizeof(intf_entry_t));
  EXPECT_EXIT(
      {
        const Watch watch(ExitAfterFourRecords);
        init_intf_entry_list(kBeyond32Bits);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
