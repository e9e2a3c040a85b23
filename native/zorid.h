/// \file
/// The native interface identifier.
#pragma once

#include <cstdint>
#include <cstring>

#include "native/export.h"

/// An identifier of four octets. No value is reserved: the all-zero identifier, which is the
/// default, is an identifier like any other.
struct ZORL2_EXPORT zorid_t {
  /// The most significant octet first.
  std::uint8_t octets[4] = {0, 0, 0, 0};
};

static_assert(sizeof(zorid_t) == 4, "an identifier is its four octets and nothing else");

/// Returns the identifier as a 32-bit number whose most significant byte is octet 0.
inline std::uint32_t ZoridNumber(const zorid_t& id) noexcept {
  std::uint32_t number;
  std::memcpy(&number, id.octets, sizeof(number));
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  number = __builtin_bswap32(number);
#endif
  return number;
}

/// Compares octet by octet, from octet 0 on. The maps of the state signals are in this order.
inline bool operator<(const zorid_t& a, const zorid_t& b) noexcept {
  return ZoridNumber(a) < ZoridNumber(b);
}

/// Returns whether all four octets are equal.
inline bool operator==(const zorid_t& a, const zorid_t& b) noexcept {
  return ZoridNumber(a) == ZoridNumber(b);
}

/// Returns whether an octet differs.
inline bool operator!=(const zorid_t& a, const zorid_t& b) noexcept { return !(a == b); }
