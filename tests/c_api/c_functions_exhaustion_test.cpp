// The C functions when memory runs out, and what they ask for when it does not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "c_api/intf_entry.h"
#include "tests/c_api/watched_memory.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::KilledBySignal;
using zorl2_test::Events;
using zorl2_test::kPattern;
using zorl2_test::kUnlimited;
using zorl2_test::Watch;
using zorl2_test::watched;
using zorl2_test::WatchedMemory;

intf_entry_t* NewRecord(long granted = kUnlimited) {
  const Watch watch(granted);
  return init_intf_entry();
}

intf_entry_list_t* NewList(std::size_t count, long granted = kUnlimited) {
  const Watch watch(granted);
  return init_intf_entry_list(count);
}

TEST(SingleRecord, IsOneAllocationAndThreeBuffers) {
  intf_entry_t* record = NewRecord();
  EXPECT_THAT(Events(), ElementsAre("new nothrow 104", "new[] nothrow 64", "new[] nothrow 32",
                                    "new[] nothrow 32"));
  EXPECT_EQ(record, watched.kept[0].memory);
  EXPECT_EQ(record->intf_name, watched.kept[1].memory);
  EXPECT_EQ(record->phy_addr, watched.kept[2].memory);
  EXPECT_EQ(record->redundancy_group_phy_addr, watched.kept[3].memory);
  destroy_intf_entry(&record);
}

TEST(SingleRecord, EveryByteIsZeroedButTheBufferPointers) {
  intf_entry_t* record = NewRecord();
  EXPECT_THAT(record->manager_data_1, Each(0));
  EXPECT_THAT(record->manager_data_2, Each(0));
  EXPECT_THAT(record->manager_data_3, Each(0));
  EXPECT_TRUE(std::all_of(record->intf_name, record->intf_name + 64, [](char c) { return !c; }));
  EXPECT_TRUE(std::all_of(record->phy_addr, record->phy_addr + 32, [](char c) { return !c; }));
  EXPECT_TRUE(std::all_of(record->redundancy_group_phy_addr, record->redundancy_group_phy_addr + 32,
                          [](char c) { return !c; }));
  destroy_intf_entry(&record);
}

TEST(SingleRecord, IsReleasedInOrderEachAsItWasAllocated) {
  intf_entry_t* record = NewRecord();
  const std::vector<void*> memory = {record->intf_name, record->phy_addr,
                                     record->redundancy_group_phy_addr, record};
  {
    const Watch watch;
    destroy_intf_entry(&record);
  }
  EXPECT_THAT(Events(), ElementsAre("delete[]", "delete[]", "delete[]", "delete"));
  for (std::size_t i = 0; i < memory.size(); ++i) EXPECT_EQ(watched.kept[i].memory, memory[i]);
}

// The record, then each of its buffers: 0 to 3 allocations are granted.
class SingleRecordDeathTest : public testing::TestWithParam<long> {};

TEST_P(SingleRecordDeathTest, ExhaustionIsAnInvalidMemoryAccess) {
  EXPECT_EXIT(NewRecord(GetParam()), KilledBySignal(SIGSEGV), "");
}

INSTANTIATE_TEST_SUITE_P(Granted, SingleRecordDeathTest, testing::Values(0, 1, 2, 3));

TEST(List, IsAHeaderAnArrayAndThreeBuffersEach) {
  intf_entry_list_t* list = NewList(2);
  EXPECT_THAT(Events(), ElementsAre("new 16", "new[] 208", "new[] nothrow 64", "new[] nothrow 32",
                                    "new[] nothrow 32", "new[] nothrow 64", "new[] nothrow 32",
                                    "new[] nothrow 32"));
  EXPECT_EQ(list, watched.kept[0].memory);
  EXPECT_EQ(list->entries, watched.kept[1].memory);
  EXPECT_EQ(list->entries[1].phy_addr, watched.kept[6].memory);
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  EXPECT_THAT(Events(), ElementsAre("delete[]", "delete[]", "delete[]", "delete[]", "delete[]",
                                    "delete[]", "delete[]", "delete"));
}

TEST(List, OfNoneIsAHeaderAndAnArrayWithoutRecords) {
  intf_entry_list_t* list = NewList(0);
  ASSERT_NE(list, nullptr);
  EXPECT_THAT(Events(), ElementsAre("new 16", "new[]"));
  EXPECT_EQ(list->count, 0u);
  EXPECT_EQ(list->entries, watched.kept[1].memory);
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  EXPECT_THAT(Events(), ElementsAre("delete[]", "delete"));
}

TEST(List, LeavesWhatIsNoBufferUnwritten) {
  intf_entry_list_t* list = NewList(3);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->count, 3u);
  for (int i = 0; i < 3; ++i) {
    const intf_entry_t& record = list->entries[i];
    EXPECT_THAT(record.manager_data_1, Each(kPattern));
    EXPECT_THAT(record.manager_data_2, Each(kPattern));
    EXPECT_THAT(record.manager_data_3, Each(kPattern));
    EXPECT_TRUE(std::all_of(record.intf_name, record.intf_name + 64, [](char c) { return !c; }));
    EXPECT_TRUE(std::all_of(record.phy_addr, record.phy_addr + 32, [](char c) { return !c; }));
    EXPECT_TRUE(std::all_of(record.redundancy_group_phy_addr, record.redundancy_group_phy_addr + 32,
                            [](char c) { return !c; }));
  }
  destroy_intf_entry_list(&list);
}

// The last count does not fit 16 bits. Not one allocation more than promised is granted.
TEST(List, GivesEverythingBack) {
  for (const std::size_t count : {0, 1, 3, 1000, 70000}) {
    const auto promised = static_cast<long>(2 + 3 * count);
    const Watch watch(promised);
    intf_entry_list_t* list = init_intf_entry_list(count);
    const std::uint32_t counted = list->count;
    const long live = watched.live;
    destroy_intf_entry_list(&list);
    const long left = watched.live;
    watched.watching = false;
    EXPECT_EQ(counted, count);
    EXPECT_EQ(live, promised);
    EXPECT_EQ(left, 0);
  }
}

TEST(List, ABufferSetToNullIsPassedOverAndTheOthersAreReleased) {
  intf_entry_list_t* list = NewList(2);
  char* const lost = list->entries[0].phy_addr;
  list->entries[0].phy_addr = nullptr;
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  // Five buffers, the array, the header.
  EXPECT_EQ(watched.live, -7);
  delete[] lost;
}

TEST(List, WithoutRecordsAndArrayReleasesItsHeader) {
  intf_entry_list_t* list = NewList(0);
  intf_entry_t* const lost = list->entries;
  list->entries = nullptr;
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  EXPECT_THAT(Events(), ElementsAre("delete"));
  delete[] lost;
}

TEST(List, ReleasesItsRecordsInAscendingOrder) {
  intf_entry_list_t* list = NewList(3);
  std::vector<void*> memory;
  for (int i = 0; i < 3; ++i) {
    const intf_entry_t& record = list->entries[i];
    memory.insert(memory.end(),
                  {record.intf_name, record.phy_addr, record.redundancy_group_phy_addr});
  }
  memory.insert(memory.end(), {list->entries, list});
  {
    const Watch watch;
    destroy_intf_entry_list(&list);
  }
  ASSERT_EQ(watched.events, static_cast<int>(memory.size()));
  for (std::size_t i = 0; i < memory.size(); ++i) EXPECT_EQ(watched.kept[i].memory, memory[i]);
}

TEST(List, WithoutMemoryForTheHeaderIsNull) {
  EXPECT_EQ(NewList(3, 0), nullptr);
  EXPECT_EQ(watched.live, 0);
  EXPECT_THAT(Events(), IsEmpty());
}

TEST(List, WithoutMemoryForTheArrayIsNullAndTheHeaderIsReleased) {
  for (const std::size_t count : {0, 1, 3, 1000}) {
    EXPECT_EQ(NewList(count, 1), nullptr);
    EXPECT_EQ(watched.live, 0);
    EXPECT_THAT(Events(), ElementsAre("new 16", "delete"));
  }
}

TEST(List, ACountThatNoMachineHasMemoryForIsNullAndTheHeaderIsReleased) {
  for (const std::size_t count : {std::size_t{1} << 57, std::size_t{1} << 63, ~std::size_t{0},
                                  PTRDIFF_MAX / sizeof(intf_entry_t) + 1,
                                  PTRDIFF_MAX / sizeof(intf_entry_t), std::size_t{1} << 56}) {
    EXPECT_EQ(NewList(count), nullptr) << count;
    EXPECT_EQ(watched.live, 0);
    EXPECT_THAT(Events(), ElementsAre("new 16", "delete"));
  }
}

// Header and array are there, then the buffers fail: each of those of the first record, and one of
// a later record.
class ListDeathTest : public testing::TestWithParam<long> {};

TEST_P(ListDeathTest, ExhaustionInABufferIsAnInvalidMemoryAccess) {
  EXPECT_EXIT(NewList(3, 2 + GetParam()), KilledBySignal(SIGSEGV), "");
}

INSTANTIATE_TEST_SUITE_P(BuffersGranted, ListDeathTest, testing::Values(0, 1, 2, 7, 8));

// More records than 32 bits count: an array of 2^32 + 3 records, mapped without memory behind it.
constexpr std::size_t kBeyond32Bits = (std::size_t{1} << 32) + 3;

void* MapArray() {
  void* memory = mmap(nullptr, kBeyond32Bits * sizeof(intf_entry_t), PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  return memory == MAP_FAILED ? nullptr : memory;
}

// Looks at the header once the buffers of more than three records have been asked for, and ends
// the process with what it sees.
void* EndAfterFourRecords(const WatchedMemory::Event& event) {
  if (watched.events == 1) return MapArray();
  if (watched.events < 2 + 4 * 3) return nullptr;
  const auto* list = static_cast<const intf_entry_list_t*>(watched.kept[0].memory);
  const bool as_promised = list->count == 3 && list->entries == watched.kept[1].memory &&
                           event.size == ZORL2_INTF_NAME_SIZE;
  _exit(as_promised ? 0 : 1);
}

TEST(ListDeathTest, KeepsTheLow32BitsOfTheCountAndGoesOnToTheFullOne) {
  void* const probe = MapArray();
  if (probe == nullptr) GTEST_SKIP() << "the machine maps no array of this size";
  munmap(probe, kBeyond32Bits * sizeof(intf_entry_t));
  EXPECT_EXIT(
      {
        const Watch watch;
        watched.hook = EndAfterFourRecords;
        init_intf_entry_list(kBeyond32Bits);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
