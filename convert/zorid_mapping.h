// Not installed. The identifier's conversion in both directions, inline because the larger
// converters run it for each of their identifiers.
#pragma once

#include <cstdint>

#include "convert/nested_message.h"
#include "native/zorid.h"
#include "zorid.pb.h"

namespace zorl2_mapping {

constexpr int kOctets = static_cast<int>(sizeof(zorid_t::octets));

// False and all zero unless the message holds exactly four values.
inline bool ToNative(const zorl2::protobuf::Zorid& message, zorid_t& id) {
  if (message.value_size() != kOctets) {
    id = zorid_t{};
    return false;
  }
  const std::uint32_t* values = message.value().data();
  // The upper 24 bits are dropped without a check: a peer that widens an octet with rubbish is
  // understood all the same.
  zorid_t read;
  for (int i = 0; i < kOctets; ++i) read.octets[i] = static_cast<std::uint8_t>(values[i]);
  id = read;  // Stored at once: octets stored one by one stall whoever then reads the whole.
  return true;
}

// Appends the four octets to a message that holds none. Always true; its callers test it all the
// same, as they test the other direction.
inline bool ToMessage(const zorid_t& id, zorl2::protobuf::Zorid& message) {
  auto& values = *message.mutable_value();
  if (values.Capacity() < kOctets) values.Reserve(kOctets);
  std::uint32_t* appended = values.AddNAlreadyReserved(kOctets);
  for (int i = 0; i < kOctets; ++i) appended[i] = id.octets[i];
  return true;
}

}  // namespace zorl2_mapping
