// The native interface identifier.
#pragma once

#include <cstdint>
#include <cstring>

#include "native/export.h"

// Four octets, the most significant first. A plain value without a reserved pattern: the all-zero
// identifier is an identifier like any other, and what a default-constructed one holds.
struct ZORL2_EXPORT zorid_t {
  // From the most significant to the least.
  std::uint8_t octets[4] = {0, 0, 0, 0};
};

static_assert(sizeof(zorid_t) == 4, "an identifier is its four octets and nothing else");

// The identifier read as the 32-bit number whose most significant byte is octet 0, whatever the
// byte order of the processor. Never throws.
inline std::uint32_t ZoridNumber(const zorid_t& id) noexcept {
  std::uint32_t number;
  std::memcpy(&number, id.octets, sizeof(number));
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  number = __builtin_bswap32(number);
#endif
  return number;
}

// Strict weak ordering octet by octet, as unsigned bytes from octet 0 on: exactly the order of
// memcmp over the four octets, and of ZoridNumber. The maps of the state signals are kept in it.
inline bool operator<(const zorid_t& a, const zorid_t& b) noexcept {
  return ZoridNumber(a) < ZoridNumber(b);
}

// All four octets are equal.
inline bool operator==(const zorid_t& a, const zorid_t& b) noexcept {
  return ZoridNumber(a) == ZoridNumber(b);
}

// Some octet differs.
inline bool operator!=(const zorid_t& a, const zorid_t& b) noexcept { return !(a == b); }
