/*
 * Interface entry records for callers in C.
 *
 * These functions only manage memory: they neither fill the records with data nor convert them. No
 * exception ever leaves them. They keep no state: distinct records and lists may be created and
 * destroyed from any threads at once.
 */
#ifndef ZORL2_C_API_INTF_ENTRY_H
#define ZORL2_C_API_INTF_ENTRY_H

#include <stddef.h>
#include <stdint.h>

/* What a C++ caller is told: no exception leaves these functions. */
#ifdef __cplusplus
#define ZORL2_C_NOEXCEPT noexcept
extern "C" {
#else
#define ZORL2_C_NOEXCEPT
#endif

/* Marks the functions that the library exports. */
#define ZORL2_C_EXPORT __attribute__((visibility("default")))

/* The size of the name buffer of a record in octets, the terminator included. */
#define ZORL2_INTF_NAME_SIZE 64
/* The size of the physical address buffer, likewise. */
#define ZORL2_PHY_ADDR_SIZE 32
/* The size of the redundancy group's address buffer, likewise. */
#define ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE 32

/*
 * One interface. The record owns its three buffers, each a zero-terminated text. A caller may set
 * a buffer pointer to null, having lost the buffer with it, but must never point it at other
 * memory: the destroy functions free whatever is not null in the way it was allocated here.
 */
typedef struct intf_entry {
  unsigned char manager_data_1[8];  /* the manager's own; never read here */
  char* intf_name;                  /* ZORL2_INTF_NAME_SIZE octets */
  char* phy_addr;                   /* ZORL2_PHY_ADDR_SIZE octets */
  unsigned char manager_data_2[8];  /* the manager's own; never read here */
  char* redundancy_group_phy_addr;  /* ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE octets */
  unsigned char manager_data_3[64]; /* the manager's own; never read here */
} intf_entry_t;

/*
 * A counted list. It owns one contiguous array of records, and each record its three buffers. A
 * record of a list is not allocated on its own: it must never go to destroy_intf_entry.
 */
typedef struct intf_entry_list {
  intf_entry_t* entries; /* not null, also for a list of none */
  uint32_t count;        /* the number of records in entries */
} intf_entry_list_t;

/*
 * A new record, zero throughout, with three buffers that hold empty texts. The caller owns it and
 * gives it to destroy_intf_entry. Never null: when memory runs out, the process ends with an
 * invalid memory access.
 */
ZORL2_C_EXPORT intf_entry_t* init_intf_entry(void) ZORL2_C_NOEXCEPT;

/*
 * Frees the record at *entry with its buffers and sets *entry to null. *entry must not be null: it
 * is not tested, so that a second call through the same variable faults.
 */
ZORL2_C_EXPORT void destroy_intf_entry(intf_entry_t** entry) ZORL2_C_NOEXCEPT;

/*
 * A new list of count records with three empty buffers each. Null, with nothing left allocated,
 * when the header or the array cannot be allocated; when a buffer cannot, the process ends with an
 * invalid memory access. The records are NOT zeroed: what is not a buffer holds no defined value
 * until the caller sets it. The list keeps the low 32 bits of count.
 */
ZORL2_C_EXPORT intf_entry_list_t* init_intf_entry_list(size_t count) ZORL2_C_NOEXCEPT;

/*
 * Frees the list at *list with its records and their buffers. *list must not be null. *list is left
 * as it was: it still holds the address of the freed list, and the caller must discard it.
 */
ZORL2_C_EXPORT void destroy_intf_entry_list(intf_entry_list_t** list) ZORL2_C_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
