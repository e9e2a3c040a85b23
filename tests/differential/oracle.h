// A second implementation of the conversions, plain enough to be checked by reading: no tables, no
// shared helpers, no generated code. Tests compare the library with it. It implements the promises
// of the headers in convert/ and must never include one of them.
#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"

namespace oracle {

// How a conversion ends.
enum class Outcome {
  kTrue,
  kFalse,
  kMapAt,       // std::out_of_range, "map::at"
  kInvalidKey,  // boost::wrapexcept<std::out_of_range>, "bimap<>: invalid key"
  kFatal,       // fault report and exit(1)
};

// The lines that the two reachable fault sites report.
constexpr int kShutFaultLine = 64;
constexpr int kBlockFaultLine = 100;

// The messages as the schema lists them: a field without a value is absent, an enumeration is its
// number.

struct Zorid {
  std::vector<std::uint32_t> value;
};

struct General {
  std::optional<std::string> intf_name, phy_addr;
  std::optional<std::uint32_t> bridge_port_number, redundancy_group_id;
  std::optional<std::string> redundancy_group_phy_addr;
};

struct Status {
  std::optional<std::int32_t> adminStatus, operationalStatus, linkStatus;
  std::optional<std::uint32_t> operationalSpeed;
  std::optional<bool> extraShutdown, extraBlocking, configShutdown;
};

struct Physical {
  std::optional<std::uint32_t> intf_mtu;
  std::optional<std::int32_t> eth_speed, eth_duplex_mode;
};

struct Flags {
  std::optional<bool> if_l2_switching, if_in_bundle, l2_bundle, l2_sub_if, point_to_point;
  std::optional<bool> if_multicast;
};

struct Type {
  std::optional<std::int32_t> interfaceType;
  std::optional<Flags> interfaceFlags;
  std::optional<std::int32_t> vlanType;
};

struct Block {
  std::optional<std::int32_t> protocol, state;
};

struct Entry {
  std::optional<Zorid> zorid, parent;
  std::optional<General> generalInfo;
  std::optional<Status> statusInfo;
  std::optional<Physical> physicalInfo;
  std::optional<Type> typeInfo;
  std::vector<std::int32_t> shutdownProtos;
  std::vector<Block> blockInfo;
  std::optional<std::int32_t> intfCategory;
};

// One element of either state signal; the shutdown state is 0 or 1.
struct State {
  std::optional<Zorid> zorid;
  std::optional<std::int32_t> state;
};

// Either state signal.
struct Signal {
  std::optional<std::int32_t> protocol;
  std::vector<State> intfs;
};

struct Categories {
  std::optional<bool> l1, l2, vp, l2_sub_if, virtual_if;
};

struct Client {
  std::optional<std::uint64_t> clientAddress;
  std::optional<std::int32_t> protocolType;
  std::optional<Categories> intfCategory;
  std::optional<std::string> token;
};

struct Lag {
  std::optional<Zorid> lag, member;
  std::optional<std::uint64_t> token;
  std::optional<bool> collecting, distributing;
};

// The native interface entry with public members.
struct EntryRecord {
  zorid_t id;
  zorid_t parent;
  IntfEntry::GeneralInfo generalInfo;
  IntfEntry::StatusInfo statusInfo;
  IntfEntry::PhysicalInfo physicalInfo;
  IntfEntry::TypeInfo typeInfo;
  InterfaceCategory interfaceCategory = L1;
  std::list<ProtocolType> shutdownProtos;
  std::list<IntfEntry::BlockInfo> blockInfo;
};

// Message to native.
Outcome ToNative(const Zorid& message, zorid_t& native);
Outcome ToNative(const General& message, IntfEntry::GeneralInfo& native);
Outcome ToNative(const Status& message, IntfEntry::StatusInfo& native);
Outcome ToNative(const Physical& message, IntfEntry::PhysicalInfo& native);
Outcome ToNative(const Flags& message, IntfEntry::InterfaceFlags& native);
Outcome ToNative(const Type& message, IntfEntry::TypeInfo& native);
Outcome ToNative(const Block& message, IntfEntry::BlockInfo& native);
Outcome ToNative(const Entry& message, EntryRecord& native);
Outcome ToNative(const Signal& message, ShutStateInfoSyncSignal& native);
Outcome ToNative(const Signal& message, BlockStateInfoSyncSignal& native);
Outcome ToNative(const Client& message, ZORL2InfoClientConfig& native);
Outcome ToNative(const Lag& message, LagMemberOperation& native);

// Native to message. A part of an entry overwrites fields of the message, a whole message is
// replaced.
Outcome ToMessage(const zorid_t& native, Zorid& message);
Outcome ToMessage(const IntfEntry::GeneralInfo& native, General& message);
Outcome ToMessage(const IntfEntry::StatusInfo& native, Status& message);
Outcome ToMessage(const IntfEntry::PhysicalInfo& native, Physical& message);
Outcome ToMessage(const IntfEntry::InterfaceFlags& native, Flags& message);
Outcome ToMessage(const IntfEntry::TypeInfo& native, Type& message);
Outcome ToMessage(const IntfEntry::BlockInfo& native, Block& message);
Outcome ToMessage(const EntryRecord& native, Entry& message);
Outcome ToMessage(const ShutStateInfoSyncSignal& native, Signal& message);
Outcome ToMessage(const BlockStateInfoSyncSignal& native, Signal& message);
Outcome ToMessage(const ZORL2InfoClientConfig& native, Client& message);
Outcome ToMessage(const LagMemberOperation& native, Lag& message);

// The translations of protocols and block states, which accept every number.
std::int32_t SerializeProtocol(std::int32_t native);
std::int32_t DeserializeProtocol(std::int32_t message);
std::int32_t OneOrZero(std::int32_t blockState);

// The conditions of docs/behaviour.md that the conversions of this thread met since the last call.
std::set<std::string> TakeNotes();

// Every required field is present, nested ones included.
bool Complete(const Entry& message);
bool Complete(const Signal& message);
bool Complete(const Client& message);

}  // namespace oracle
