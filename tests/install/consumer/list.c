/* Calls the C functions from C99: creates and destroys a list and a record. */
#include <stdio.h>
#include <string.h>

#include "c_api/intf_entry.h"

int main(void) {
  intf_entry_list_t* list = init_intf_entry_list(3);
  intf_entry_t* record = init_intf_entry();
  uint32_t i;
  if (list == NULL || list->count != 3) return 1;
  for (i = 0; i < list->count; ++i) {
    snprintf(list->entries[i].intf_name, ZORL2_INTF_NAME_SIZE, "ge-0/0/%u", i);
    if (list->entries[i].phy_addr[0] != '\0') return 1;
  }
  strcpy(record->intf_name, list->entries[2].intf_name);
  if (strcmp(record->intf_name, "ge-0/0/2") != 0) return 1;
  destroy_intf_entry(&record);
  if (record != NULL) return 1;
  destroy_intf_entry_list(&list);
  printf("proved, C99: a list of three records and a single record were filled and destroyed\n");
  return 0;
}
