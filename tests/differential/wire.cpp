#include "tests/reliability/wire.h"

namespace proof {

namespace {

void Varint(std::string& out, std::uint64_t value) {
  while (value >= 128) {
    out.push_back(static_cast<char>(value % 128 + 128));
    value /= 128;
  }
  out.push_back(static_cast<char>(value));
}

void Bytes(std::string& out, unsigned number, const std::string& bytes) {
  Varint(out, number * 8 + 2);
  Varint(out, bytes.size());
  out += bytes;
}

void Put(std::string& out, unsigned number, std::uint64_t value) {
  Varint(out, number * 8);
  Varint(out, value);
}

// An enumeration travels as a 64-bit number with its sign.
std::uint64_t Extend(std::int32_t value) {
  return static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
}

void Field(std::string& out, unsigned number, const std::optional<std::uint32_t>& value) {
  if (value) Put(out, number, *value);
}

void Field(std::string& out, unsigned number, const std::optional<std::uint64_t>& value) {
  if (value) Put(out, number, *value);
}

void Field(std::string& out, unsigned number, const std::optional<bool>& value) {
  if (value) Put(out, number, *value ? 1 : 0);
}

void Field(std::string& out, unsigned number, const std::optional<std::int32_t>& value) {
  if (value) Put(out, number, Extend(*value));
}

void Field(std::string& out, unsigned number, const std::optional<std::string>& value) {
  if (value) Bytes(out, number, *value);
}

template <typename Message>
void Field(std::string& out, unsigned number, const std::optional<Message>& value) {
  if (value) Bytes(out, number, Encode(*value));
}

std::string EncodeState(const oracle::State& m) {
  std::string out;
  Field(out, 1, m.zorid);
  Field(out, 2, m.state);
  return out;
}

}  // namespace

std::string Encode(const oracle::Zorid& m) {
  std::string packed;
  for (const std::uint32_t value : m.value) Varint(packed, value);
  std::string out;
  if (!m.value.empty()) Bytes(out, 1, packed);
  return out;
}

std::string Encode(const oracle::General& m) {
  std::string out;
  Field(out, 1, m.intf_name);
  Field(out, 2, m.phy_addr);
  Field(out, 3, m.bridge_port_number);
  Field(out, 4, m.redundancy_group_id);
  Field(out, 5, m.redundancy_group_phy_addr);
  return out;
}

std::string Encode(const oracle::Status& m) {
  std::string out;
  Field(out, 1, m.adminStatus);
  Field(out, 2, m.operationalStatus);
  Field(out, 3, m.linkStatus);
  Field(out, 4, m.operationalSpeed);
  Field(out, 5, m.extraShutdown);
  Field(out, 6, m.extraBlocking);
  Field(out, 7, m.configShutdown);
  return out;
}

std::string Encode(const oracle::Physical& m) {
  std::string out;
  Field(out, 1, m.intf_mtu);
  Field(out, 2, m.eth_speed);
  Field(out, 3, m.eth_duplex_mode);
  return out;
}

std::string Encode(const oracle::Flags& m) {
  std::string out;
  Field(out, 1, m.if_l2_switching);
  Field(out, 2, m.if_in_bundle);
  Field(out, 3, m.l2_bundle);
  Field(out, 4, m.l2_sub_if);
  Field(out, 5, m.point_to_point);
  Field(out, 6, m.if_multicast);
  return out;
}

std::string Encode(const oracle::Type& m) {
  std::string out;
  Field(out, 1, m.interfaceType);
  Field(out, 2, m.interfaceFlags);
  Field(out, 3, m.vlanType);
  return out;
}

std::string Encode(const oracle::Block& m) {
  std::string out;
  Field(out, 1, m.protocol);
  Field(out, 2, m.state);
  return out;
}

std::string Encode(const oracle::Entry& m) {
  std::string out;
  Field(out, 1, m.zorid);
  Field(out, 2, m.parent);
  Field(out, 3, m.generalInfo);
  Field(out, 4, m.statusInfo);
  Field(out, 5, m.physicalInfo);
  Field(out, 6, m.typeInfo);
  for (const std::int32_t protocol : m.shutdownProtos) Put(out, 7, Extend(protocol));
  for (const oracle::Block& block : m.blockInfo) Bytes(out, 8, Encode(block));
  Field(out, 9, m.intfCategory);
  return out;
}

std::string Encode(const oracle::Signal& m) {
  std::string out;
  Field(out, 1, m.protocol);
  for (const oracle::State& state : m.intfs) Bytes(out, 2, EncodeState(state));
  return out;
}

std::string Encode(const oracle::Categories& m) {
  std::string out;
  Field(out, 1, m.l1);
  Field(out, 2, m.l2);
  Field(out, 3, m.vp);
  Field(out, 4, m.l2_sub_if);
  Field(out, 5, m.virtual_if);
  return out;
}

std::string Encode(const oracle::Client& m) {
  std::string out;
  Field(out, 1, m.clientAddress);
  Field(out, 2, m.protocolType);
  Field(out, 3, m.intfCategory);
  Field(out, 4, m.token);
  return out;
}

std::string Encode(const oracle::Lag& m) {
  std::string out;
  Field(out, 1, m.lag);
  Field(out, 2, m.member);
  Field(out, 3, m.token);
  Field(out, 4, m.collecting);
  Field(out, 5, m.distributing);
  return out;
}

}  // namespace proof
