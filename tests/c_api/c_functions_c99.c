/*
 * A caller in C99: the header, the layout of the two records and all four functions. Ends with the
 * number of expectations that failed.
 */
#include "c_api/intf_entry.h"

#include <stdio.h>
#include <string.h>

#include "native/pvex_fault.h"

static int failures = 0;

#define EXPECT(condition)                                             \
  do {                                                                \
    if (!(condition)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                     \
    }                                                                 \
  } while (0)

/* The library wants both from the process that loads it; nothing here calls them. */
void pvex_print_backtrace(void) {}

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  (void)severity;
  (void)function;
  (void)file;
  (void)line;
  (void)message;
  return 0;
}

/* The array has a negative size when a layout differs: an error of the compiler. */
#define LAYOUT(name, condition) typedef char name[(condition) ? 1 : -1]
LAYOUT(size_of_a_record, sizeof(intf_entry_t) == 104);
LAYOUT(place_of_manager_data_1, offsetof(intf_entry_t, manager_data_1) == 0);
LAYOUT(place_of_intf_name, offsetof(intf_entry_t, intf_name) == 8);
LAYOUT(place_of_phy_addr, offsetof(intf_entry_t, phy_addr) == 16);
LAYOUT(place_of_manager_data_2, offsetof(intf_entry_t, manager_data_2) == 24);
LAYOUT(place_of_group_phy_addr, offsetof(intf_entry_t, redundancy_group_phy_addr) == 32);
LAYOUT(place_of_manager_data_3, offsetof(intf_entry_t, manager_data_3) == 40);
LAYOUT(size_of_manager_data_1, sizeof(((intf_entry_t*)0)->manager_data_1) == 8);
LAYOUT(size_of_manager_data_2, sizeof(((intf_entry_t*)0)->manager_data_2) == 8);
LAYOUT(size_of_manager_data_3, sizeof(((intf_entry_t*)0)->manager_data_3) == 64);
LAYOUT(size_of_a_list, sizeof(intf_entry_list_t) == 16);
LAYOUT(place_of_entries, offsetof(intf_entry_list_t, entries) == 0);
LAYOUT(place_of_count, offsetof(intf_entry_list_t, count) == 8);
LAYOUT(size_of_count, sizeof(((intf_entry_list_t*)0)->count) == 4);

static int all_zero(const void* memory, size_t size) {
  const unsigned char* bytes = memory;
  size_t i;
  for (i = 0; i < size; ++i) {
    if (bytes[i] != 0) return 0;
  }
  return 1;
}

static void expect_empty_buffers(const intf_entry_t* record) {
  EXPECT(record->intf_name != NULL && all_zero(record->intf_name, 64));
  EXPECT(record->phy_addr != NULL && all_zero(record->phy_addr, 32));
  EXPECT(record->redundancy_group_phy_addr != NULL &&
         all_zero(record->redundancy_group_phy_addr, 32));
}

/* Texts as long as each buffer takes. */
static void fill_buffers(intf_entry_t* record) {
  memset(record->intf_name, 'n', 63);
  memset(record->phy_addr, 'p', 31);
  memset(record->redundancy_group_phy_addr, 'g', 31);
  EXPECT(strlen(record->intf_name) == 63);
  EXPECT(strlen(record->phy_addr) == 31);
  EXPECT(strlen(record->redundancy_group_phy_addr) == 31);
}

static void a_single_record(void) {
  intf_entry_t* record = init_intf_entry();
  EXPECT(all_zero(record->manager_data_1, sizeof(record->manager_data_1)));
  EXPECT(all_zero(record->manager_data_2, sizeof(record->manager_data_2)));
  EXPECT(all_zero(record->manager_data_3, sizeof(record->manager_data_3)));
  expect_empty_buffers(record);
  fill_buffers(record);
  destroy_intf_entry(&record);
  EXPECT(record == NULL);
}

static void a_list(size_t count) {
  intf_entry_list_t* list = init_intf_entry_list(count);
  intf_entry_list_t* const address = list;
  size_t i;
  EXPECT(list != NULL);
  EXPECT(list->count == count);
  EXPECT(list->entries != NULL);
  for (i = 0; i < count; ++i) {
    expect_empty_buffers(&list->entries[i]);
    fill_buffers(&list->entries[i]);
  }
  destroy_intf_entry_list(&list);
  EXPECT(list == address);
}

int main(void) {
  a_single_record();
  a_list(0);
  a_list(1);
  a_list(3);
#ifndef ZORL2_SANITIZED /* The sanitizers end the process instead. */
  EXPECT(init_intf_entry_list((size_t)-1) == NULL);
#endif
  if (failures == 0) puts("all expectations hold");
  return failures;
}
