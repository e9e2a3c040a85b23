/**
 * \file
 * Interface entry records for callers in C.
 *
 * These functions manage memory only: they do not fill records with data or convert them. They
 * throw nothing and keep no state: several threads may create and destroy different records and
 * lists at the same time.
 */
#ifndef ZORL2_C_API_INTF_ENTRY_H
#define ZORL2_C_API_INTF_ENTRY_H

#include <stddef.h>
#include <stdint.h>

/** Tells a C++ caller that these functions throw nothing. */
#ifdef __cplusplus
#define ZORL2_C_NOEXCEPT noexcept
extern "C" {
#else
#define ZORL2_C_NOEXCEPT
#endif

/** Exports a function from the library. */
#define ZORL2_C_EXPORT __attribute__((visibility("default")))

/** The size of a name buffer in bytes, the terminator included. */
#define ZORL2_INTF_NAME_SIZE 64
/** The size of a physical address buffer in bytes, the terminator included. */
#define ZORL2_PHY_ADDR_SIZE 32
/** The size of a redundancy group's address buffer in bytes, the terminator included. */
#define ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE 32

/**
 * One interface. The record owns its three buffers, each a zero-terminated text. A caller may set a
 * buffer pointer to null, which leaks the buffer, but must not point it at other memory: the
 * destroy functions free each buffer that is not null.
 */
typedef struct intf_entry {
  unsigned char manager_data_1[8];  /**< the manager's own; not read here */
  char* intf_name;                  /**< ZORL2_INTF_NAME_SIZE bytes */
  char* phy_addr;                   /**< ZORL2_PHY_ADDR_SIZE bytes */
  unsigned char manager_data_2[8];  /**< the manager's own; not read here */
  char* redundancy_group_phy_addr;  /**< ZORL2_REDUNDANCY_GROUP_PHY_ADDR_SIZE bytes */
  unsigned char manager_data_3[64]; /**< the manager's own; not read here */
} intf_entry_t;

/**
 * A list. It owns one array of records, and each record its three buffers. A caller must not pass a
 * record of a list to destroy_intf_entry.
 */
typedef struct intf_entry_list {
  intf_entry_t* entries; /**< not null, even if the list is empty */
  uint32_t count;        /**< the number of records in entries */
} intf_entry_list_t;

/**
 * Creates a record that is zero throughout, with three empty texts. The caller passes it to
 * destroy_intf_entry.
 * Returns: never null. An allocation failure is an invalid memory access.
 */
ZORL2_C_EXPORT intf_entry_t* init_intf_entry(void) ZORL2_C_NOEXCEPT;

/**
 * Frees the record at *entry with its buffers and sets *entry to null. A null *entry is an invalid
 * memory access, so a second call with the same variable faults.
 */
ZORL2_C_EXPORT void destroy_intf_entry(intf_entry_t** entry) ZORL2_C_NOEXCEPT;

/**
 * Creates a list of `count` records with three empty texts each. The records are NOT zeroed: the
 * members other than the buffers have no defined value until the caller sets them.
 * Returns: null if the header or the array cannot be allocated; nothing is leaked. An allocation
 * failure of a buffer is an invalid memory access.
 * Lossy: the list keeps the low 32 bits of `count`.
 */
ZORL2_C_EXPORT intf_entry_list_t* init_intf_entry_list(size_t count) ZORL2_C_NOEXCEPT;

/**
 * Frees the list at *list with its records and their buffers. A null *list is an invalid memory
 * access. *list is unchanged: it still holds the address of the freed list, and the caller must
 * discard it.
 */
ZORL2_C_EXPORT void destroy_intf_entry_list(intf_entry_list_t** list) ZORL2_C_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
