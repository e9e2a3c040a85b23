/*
 * Lists of interface records in C.
 *
 * The library only manages the memory. Each record has buffers for three texts; the caller fills
 * them and must stay within their sizes.
 */
#include <stdio.h>
#include <string.h>

#include "c_api/intf_entry.h"

static void fill(intf_entry_t* record, unsigned number) {
  /* The records of a list are not zeroed, so the caller sets the other members. */
  memset(record->manager_data_1, 0, sizeof(record->manager_data_1));
  memset(record->manager_data_2, 0, sizeof(record->manager_data_2));
  memset(record->manager_data_3, 0, sizeof(record->manager_data_3));
  snprintf(record->intf_name, ZORL2_INTF_NAME_SIZE, "ge-0/0/%u", number);
  snprintf(record->phy_addr, ZORL2_PHY_ADDR_SIZE, "02:00:5e:10:00:%02x", number);
}

int main(void) {
  intf_entry_list_t* list = init_intf_entry_list(4);
  intf_entry_t* single;
  uint32_t i;

  if (list == NULL) { /* an allocation failed, or the count is too large */
    fprintf(stderr, "no list\n");
    return 1;
  }
  for (i = 0; i < list->count; ++i) fill(&list->entries[i], i);
  for (i = 0; i < list->count; ++i) {
    printf("%s %s\n", list->entries[i].intf_name, list->entries[i].phy_addr);
  }
  if (strcmp(list->entries[3].intf_name, "ge-0/0/3") != 0) return 1;

  /* A single record is zeroed. Destroy it on its own, but never a record of a list. */
  single = init_intf_entry();
  strncpy(single->intf_name, "mgmt0", ZORL2_INTF_NAME_SIZE - 1);
  printf("%s\n", single->intf_name);
  destroy_intf_entry(&single); /* single is now null */
  if (single != NULL) return 1;

  destroy_intf_entry_list(&list);
  list = NULL; /* the function does not change the variable */
  return list == NULL ? 0 : 1;
}
