// The fields of a record, for several peers.
#pragma once

#include <cstdint>
#include <tuple>
#include <type_traits>

#include "native/intf_entry.h"
#include "native/intf_entry_builder.h"

namespace zorl2_peers {

// The size of a list, written before its elements.
struct Count {
  std::uint32_t value;
};

// The parts of a record that have members of their own.
template <typename Value, typename... Parts>
constexpr bool kIsOneOf = (std::is_same_v<Value, Parts> || ...);
template <typename Value>
constexpr bool kIsPart =
    kIsOneOf<Value, Count, zorid_t, IntfEntry::GeneralInfo, IntfEntry::StatusInfo,
             IntfEntry::PhysicalInfo, IntfEntry::InterfaceFlags, IntfEntry::TypeInfo,
             IntfEntry::BlockInfo>;

// The elements of the lists of a record.
template <typename Value>
constexpr bool kIsElement = kIsOneOf<Value, ProtocolType, IntfEntry::BlockInfo>;

// References to the members of a part, in the order of the schema.
template <typename Part>
auto Members(Part& part) {
  using Type = std::remove_const_t<Part>;
  if constexpr (std::is_same_v<Type, Count>) {
    return std::tie(part.value);
  } else if constexpr (std::is_same_v<Type, zorid_t>) {
    auto& octets = part.octets;
    return std::tie(octets[0], octets[1], octets[2], octets[3]);
  } else if constexpr (std::is_same_v<Type, IntfEntry::GeneralInfo>) {
    return std::tie(part.intf_name, part.phy_addr, part.bridge_port_number,
                    part.redundancy_group_id, part.redundancy_group_phy_addr);
  } else if constexpr (std::is_same_v<Type, IntfEntry::StatusInfo>) {
    return std::tie(part.adminStatus, part.operationalStatus, part.linkStatus,
                    part.operationalSpeed, part.extraShutdown, part.extraBlocking,
                    part.configShutdown);
  } else if constexpr (std::is_same_v<Type, IntfEntry::PhysicalInfo>) {
    return std::tie(part.intf_mtu, part.eth_speed, part.eth_duplex_mode);
  } else if constexpr (std::is_same_v<Type, IntfEntry::InterfaceFlags>) {
    return std::tie(part.if_l2_switching, part.if_in_bundle, part.l2_bundle, part.l2_sub_if,
                    part.point_to_point, part.if_multicast);
  } else if constexpr (std::is_same_v<Type, IntfEntry::TypeInfo>) {
    return std::tie(part.interfaceType, part.interfaceFlags, part.vlanType);
  } else {
    static_assert(std::is_same_v<Type, IntfEntry::BlockInfo>);
    return std::tie(part.protocol, part.state);
  }
}

// Calls visit(member) with each member of a part.
template <typename Part, typename Visit>
void VisitMembers(Part& part, Visit&& visit) {
  std::apply([&](auto&... member) { (visit(member), ...); }, Members(part));
}

// Calls visit(value) with each number, flag and string of a part, or with the value itself if it is
// no part.
template <typename Value, typename Visit>
void VisitScalars(Value& value, Visit&& visit) {
  if constexpr (kIsPart<std::remove_const_t<Value>>) {
    VisitMembers(value, [&visit](auto& member) { VisitScalars(member, visit); });
  } else {
    visit(value);
  }
}

// Passes the parts of a record to `write`.
template <typename Write>
void WriteEntry(const IntfEntry& entry, Write write) {
  write(entry.getId());
  write(entry.getParent());
  write(entry.getGeneralInfo());
  write(entry.getStatusInfo());
  write(entry.getPhysicalInfo());
  write(entry.getTypeInfo());
  write(Count{static_cast<std::uint32_t>(entry.getShutdownProtos().size())});
  for (const ProtocolType& protocol : entry.getShutdownProtos()) write(protocol);
  write(Count{static_cast<std::uint32_t>(entry.getBlockInfo().size())});
  for (const IntfEntry::BlockInfo& block : entry.getBlockInfo()) write(block);
  write(entry.getInterfaceCategory());
}

// An empty part whose strings have storage. The peers fill it again for each record.
inline IntfEntry::GeneralInfo& EmptyGeneralInfo() {
  static IntfEntry::GeneralInfo general;
  general.intf_name.clear();
  general.phy_addr.clear();
  general.redundancy_group_phy_addr.clear();
  general.redundancy_group_id = 0;
  general.bridge_port_number = 0;
  return general;
}

// Overwrites the record with the parts that `read` supplies in the same order.
template <typename Read>
void ReadEntry(IntfEntry& entry, Read read) {
  const auto next = [&read](auto value) {
    read(value);
    return value;
  };
  IntfEntryBuilder builder;
  builder.addZorId(next(zorid_t())).addParent(next(zorid_t()));
  IntfEntry::GeneralInfo& general = EmptyGeneralInfo();
  read(general);
  builder.addGeneralInfo(general);
  builder.addStatusInfo(next(IntfEntry::StatusInfo()));
  builder.addPhysicalInfo(next(IntfEntry::PhysicalInfo()));
  builder.addTypeInfo(next(IntfEntry::TypeInfo()));
  for (Count count = next(Count()); count.value > 0; --count.value) {
    builder.addShutdownProto(next(ProtocolType()));
  }
  for (Count count = next(Count()); count.value > 0; --count.value) {
    builder.addBlockInfo(next(IntfEntry::BlockInfo()));
  }
  entry = builder.setInterfaceCategory(next(InterfaceCategory())).Build();
}

// A number that becomes any enumeration.
struct Number {
  std::int32_t value;
  template <typename Enum, typename = std::enable_if_t<std::is_enum_v<Enum>>>
  operator Enum() const {
    return static_cast<Enum>(value);
  }
};

// The identifier whose ZoridNumber is `number`.
inline zorid_t Identifier(std::uint32_t number) {
  return {{static_cast<std::uint8_t>(number >> 24), static_cast<std::uint8_t>(number >> 16),
           static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)}};
}

// The number of a listed enumeration value in a message, and the value of a number. Protocols
// differ: the message enumeration has the unknown protocol first, the native one has it last.
constexpr int kProtocols = PROTOCOL_UNKNOWN + 1;
template <typename Enum>
int WireNumber(Enum value) {
  return std::is_same_v<Enum, ProtocolType> ? (value + 1) % kProtocols : value;
}
template <typename Enum>
Enum FromWire(int number) {
  return static_cast<Enum>(
      std::is_same_v<Enum, ProtocolType> ? (number + kProtocols - 1) % kProtocols : number);
}

}  // namespace zorl2_peers
