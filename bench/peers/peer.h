// The interface of one way to turn native records into bytes and back.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "native/intf_entry.h"

namespace zorl2_peers {

using Records = std::vector<IntfEntry>;

// A peer lives as long as the program. It keeps its buffers, messages and objects between calls
// wherever its library can reuse them.
class Peer {
 public:
  virtual ~Peer() = default;

  // Returns the bytes of all records. They are valid until the next call.
  virtual std::string_view Encode(const Records& records) = 0;

  // Overwrites `records` with the records in `bytes`. Throws if the bytes are malformed.
  virtual void Decode(std::string_view bytes, Records& records) = 0;

  // These two are not measured. Only a peer that does not work on records has them.
  virtual void Prepare(const Records&) {}
  virtual void Collect(Records&) {}
};

std::unique_ptr<Peer> MakeLibrary();
std::unique_ptr<Peer> MakeRuntime();
std::unique_ptr<Peer> MakeBuilder();
std::unique_ptr<Peer> MakeReflection();
std::unique_ptr<Peer> MakeProtozero();
std::unique_ptr<Peer> MakeFlatBuffers();
std::unique_ptr<Peer> MakeCapnProto();
std::unique_ptr<Peer> MakeMsgpack();
std::unique_ptr<Peer> MakeCereal();
std::unique_ptr<Peer> MakeBoost();
std::unique_ptr<Peer> MakeByHand();

// The number of heap allocations of the calling thread so far (allocations.cpp).
std::uint64_t AllocationsOfThisThread() noexcept;

}  // namespace zorl2_peers
