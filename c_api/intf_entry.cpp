#include "c_api/intf_entry.h"

#include <cstdint>
#include <cstring>
#include <new>

static_assert(sizeof(intf_entry_t) == 104 && sizeof(intf_entry_list_t) == 16,
              "C callers share these layouts");

// Does not test for null: an allocation failure is promised to be an invalid memory access.
static char* NewBuffer(std::size_t size) {
  char* buffer = new (std::nothrow) char[size];
  std::memset(buffer, 0, size);
  return buffer;
}

static void AllocateBuffers(intf_entry_t* record) {
  // Without a record the process faults right here, as promised.
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
  record->intf_name = NewBuffer(ZORL2_INTF_NAME_SIZE);
  record->phy_addr = NewBuffer(ZORL2_PHY_ADDR_SIZE);
  record->redundancy_group_phy_addr = NewBuffer(ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE);
}

// delete[] ignores the buffers that the caller set to null.
static void ReleaseBuffers(const intf_entry_t* record) {
  delete[] record->intf_name;
  delete[] record->phy_addr;
  delete[] record->redundancy_group_phy_addr;
}

intf_entry_t* init_intf_entry(void) noexcept {
  auto* record = new (std::nothrow) intf_entry_t;
  if (record != nullptr) std::memset(record, 0, sizeof(*record));
  // Called without a record, too: an allocation failure is an invalid memory access, not null.
  AllocateBuffers(record);
  return record;
}

void destroy_intf_entry(intf_entry_t** entry) noexcept {
  ReleaseBuffers(*entry);
  delete *entry;
  *entry = nullptr;
}

intf_entry_list_t* init_intf_entry_list(std::size_t count) noexcept {
  intf_entry_list_t* list = nullptr;
  try {
    list = new intf_entry_list_t;
    list->entries = nullptr;
    list->count = static_cast<std::uint32_t>(count);
    // Does not zero the records: callers fill every record of a list.
    list->entries = new intf_entry_t[count];
  } catch (const std::bad_alloc&) {
    // A count that is too large for any array throws std::bad_array_new_length, which derives from
    // std::bad_alloc.
    delete list;
    return nullptr;
  }
  // The counter has 32 bits, like `list->count`; the limit is the full count. The two differ only
  // for 2^32 records or more, which fit into no memory.
  for (std::uint32_t i = 0; i < count; ++i) AllocateBuffers(&list->entries[i]);
  return list;
}

void destroy_intf_entry_list(intf_entry_list_t** list) noexcept {
  intf_entry_list_t* const released = *list;
  for (std::uint32_t i = 0; i < released->count; ++i) ReleaseBuffers(&released->entries[i]);
  delete[] released->entries;
  delete released;
}
