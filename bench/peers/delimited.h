// A length-prefixed stream of messages, in which the peers with the wire format write a list of
// records.
#pragma once

#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/message_lite.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/peers/peer.h"

namespace zorl2_peers {

// Appends the length of the message and the message.
inline void Append(const google::protobuf::MessageLite& message, std::string& bytes) {
  using google::protobuf::io::CodedOutputStream;
  const auto size = static_cast<std::uint32_t>(message.ByteSizeLong());
  const std::size_t start = bytes.size();
  bytes.resize(start + CodedOutputStream::VarintSize32(size) + size);
  auto* to = reinterpret_cast<std::uint8_t*>(&bytes[start]);
  message.SerializeWithCachedSizesToArray(CodedOutputStream::WriteVarint32ToArray(size, to));
}

// Parses the first message and removes it from `bytes`.
inline void Take(std::string_view& bytes, google::protobuf::MessageLite& message) {
  google::protobuf::io::CodedInputStream input(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                               static_cast<int>(bytes.size()));
  std::uint32_t size = 0;
  const bool complete = input.ReadVarint32(&size);
  bytes.remove_prefix(static_cast<std::size_t>(input.CurrentPosition()));
  if (!complete || size > bytes.size() ||
      !message.ParseFromArray(bytes.data(), static_cast<int>(size))) {
    throw std::runtime_error("malformed message");
  }
  bytes.remove_prefix(size);
}

// Calls read(bytes, record) for each record of the stream. `read` removes what it reads.
template <typename Read>
void ReadStream(std::string_view bytes, Records& records, Read read) {
  std::size_t count = 0;
  for (; !bytes.empty(); ++count) {
    if (count == records.size()) records.emplace_back();
    read(bytes, records[count]);
  }
  records.resize(count);
}

}  // namespace zorl2_peers
