/*
 * A caller in C99: the header, the layout of the two records and all four functions. Exits with the
 * number of expectations that failed.
 */
#include <stdio.h>
#include <string.h>

#include "c_api/intf_entry.h"
#include "native/pvex_fault.h"

static int failures = 0;

#define EXPECT(condition)                                             \
  do {                                                                \
    if (!(condition)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                     \
    }                                                                 \
  } while (0)

/* The library requires both from the process that loads it; nothing here calls them. */
void pvex_print_backtrace(void) {}

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  (void)severity, (void)function, (void)file, (void)line, (void)message;
  return 0;
}

/* If a layout differs, the array has a negative size, which the compiler rejects. */
#define LAYOUT(name, condition) typedef char name[(condition) ? 1 : -1]
LAYOUT(size_of_a_record, sizeof(intf_entry_t) == 104);
LAYOUT(place_of_manager_data_1, offsetof(intf_entry_t, manager_data_1) == 0);
LAYOUT(place_of_intf_name, offsetof(intf_entry_t, intf_name) == 8);
LAYOUT(place_of_phy_addr, offsetof(intf_entry_t, phy_addr) == 16);
LAYOUT(place_of_manager_data_2, offsetof(intf_entry_t, manager_data_2) == 24);
LAYOUT(place_of_group_phy_addr, offsetof(intf_entry_t, redundancy_group_phy_addr) == 32);
LAYOUT(place_of_manager_data_3, offsetof(intf_entry_t, manager_data_3) == 40);
/* With padding, the offsets alone do not show a missing byte. */
LAYOUT(size_of_manager_data_1, sizeof(((intf_entry_t*)0)->manager_data_1) == 8);
LAYOUT(size_of_manager_data_2, sizeof(((intf_entry_t*)0)->manager_data_2) == 8);
LAYOUT(size_of_manager_data_3, sizeof(((intf_entry_t*)0)->manager_data_3) == 64);
LAYOUT(size_of_a_list, sizeof(intf_entry_list_t) == 16);
LAYOUT(place_of_entries, offsetof(intf_entry_list_t, entries) == 0);
LAYOUT(place_of_count, offsetof(intf_entry_list_t, count) == 8);
LAYOUT(size_of_count, sizeof(((intf_entry_list_t*)0)->count) == 4);

int main(void) {
  intf_entry_t* record = init_intf_entry();
  intf_entry_list_t* list = init_intf_entry_list(3);
  intf_entry_list_t* const address = list;
  EXPECT(strlen(record->intf_name) == 0);
  memset(record->intf_name, 'n', ZORL2_INTF_NAME_SIZE - 1);
  EXPECT(strlen(record->intf_name) == 63);
  destroy_intf_entry(&record);
  EXPECT(record == NULL);

  EXPECT(list->count == 3);
  memset(list->entries[2].phy_addr, 'p', ZORL2_PHY_ADDR_SIZE - 1);
  memset(list->entries[2].redundancy_group_phy_addr, 'g', ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE - 1);
  EXPECT(strlen(list->entries[2].phy_addr) == 31);
  EXPECT(strlen(list->entries[2].redundancy_group_phy_addr) == 31);
  destroy_intf_entry_list(&list);
  EXPECT(list == address);
  if (failures == 0) puts("all expectations hold");
  return failures;
}
