// Not installed. The identifier's conversion in both directions, inline for the larger converters.
#pragma once

#include <cstdint>
#include <iterator>

#include "native/zorid.h"
#include "zorid.pb.h"

namespace zorl2_mapping {

constexpr int kOctets = static_cast<int>(sizeof(zorid_t::octets));

// Returns false and zeroes `id` if the message does not have exactly four values. Keeps the low 8
// bits of each value.
inline bool ToNative(const zorl2::protobuf::Zorid& message, zorid_t& id) {
  zorid_t converted;
  const bool complete = message.value_size() == kOctets;
  if (complete) {
    const std::uint32_t* values = message.value().data();
    for (int i = 0; i < kOctets; ++i) converted.octets[i] = static_cast<std::uint8_t>(values[i]);
  }
  id = converted;
  return complete;
}

// Replaces the values of the message. Always returns true.
inline bool ToMessage(const zorid_t& id, zorl2::protobuf::Zorid& message) {
  auto& values = *message.mutable_value();
  values.Clear();
  // A reused message has room, and this test is much cheaper than the call of Reserve().
  if (values.Capacity() < kOctets) values.Reserve(kOctets);
  std::uint32_t* added = values.AddNAlreadyReserved(kOctets);
  for (int i = 0; i < kOctets; ++i) added[i] = id.octets[i];
  return true;
}

}  // namespace zorl2_mapping
