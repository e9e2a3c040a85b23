// The ports as they are on the front of a switch.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "interface_entry.pb.h"

namespace zorl2_inspect {

enum class PortState { kNone, kUp, kDown, kDisabled, kShut, kBlocked, kCount };

const char* PortStateName(PortState state);

// Ports are entries of type ETHERNET and category L1 or L2. The number at the end of the name is
// the place; what comes before it names the row.
class FrontPanel {
 public:
  static constexpr std::uint32_t kPortsOfBank = 48;
  static constexpr std::size_t kMostPorts = 192;

  // A later entry of the same port replaces its state.
  void Add(const zorl2::protobuf::IntfEntry& entry);
  void Remove(const zorl2::protobuf::IntfEntry& entry);

  // 48 ports that follow each other, such as ge-0/0/1 to ge-0/0/48.
  struct Bank {
    std::string prefix;
    std::uint32_t first;  // The number of the first place.
    std::array<PortState, kPortsOfBank> ports = {};
    std::size_t used = 0;
  };
  // At most so many banks, those with the most ports, in the order of their names.
  std::vector<Bank> Banks(std::size_t most) const;

  using Name = std::pair<std::string, std::uint32_t>;
  const std::map<Name, PortState>& ports() const { return ports_; }
  // Entries that have no place: without a number, or more ports than can be held.
  std::uint64_t without_place() const { return without_place_; }

 private:
  std::map<Name, PortState> ports_;
  std::uint64_t without_place_ = 0;
};

}  // namespace zorl2_inspect
