#include "tests/support/native_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <vector>

namespace zorl2_test {

namespace {

// Quotes a string and writes all bytes but printable ASCII as \xHH, so that different strings look
// different and no value contains a line end.
std::string Value(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte > 0x7E || c == '"' || c == '\\') {
      constexpr char kDigits[] = "0123456789abcdef";
      out += {'\\', 'x', kDigits[byte / 16], kDigits[byte % 16]};
    } else {
      out += c;
    }
  }
  return out += '"';
}
std::string Value(const zorid_t& id) { return Text(id); }
std::string Value(std::uint64_t number) { return std::to_string(number); }
template <typename Enum, typename = std::enable_if_t<std::is_enum_v<Enum>>>
std::string Value(Enum value) {
  return std::to_string(static_cast<std::int32_t>(value));
}

// Writes the lines of a record with a prefix such as "typeInfo.".
class Lines {
 public:
  explicit Lines(std::string& out, std::string prefix = "")
      : out_(out), prefix_(std::move(prefix)) {}

  template <typename T>
  Lines& Add(const std::string& name, const T& value) {
    ((((out_ += prefix_) += name) += ": ") += Value(value)) += '\n';
    return *this;
  }

  void Members(const IntfEntry::GeneralInfo& r) {
    Add("intf_name", r.intf_name).Add("phy_addr", r.phy_addr);
    Add("redundancy_group_id", r.redundancy_group_id);
    Add("redundancy_group_phy_addr", r.redundancy_group_phy_addr);
    Add("bridge_port_number", r.bridge_port_number);
  }
  void Members(const IntfEntry::StatusInfo& r) {
    Add("adminStatus", r.adminStatus).Add("operationalStatus", r.operationalStatus);
    Add("linkStatus", r.linkStatus).Add("operationalSpeed", r.operationalSpeed);
    Add("extraShutdown", r.extraShutdown).Add("extraBlocking", r.extraBlocking);
    Add("configShutdown", r.configShutdown);
  }
  void Members(const IntfEntry::PhysicalInfo& r) {
    Add("intf_mtu", r.intf_mtu).Add("eth_speed", r.eth_speed);
    Add("eth_duplex_mode", r.eth_duplex_mode);
  }
  void Members(const IntfEntry::InterfaceFlags& r) {
    Add("if_l2_switching", r.if_l2_switching).Add("if_in_bundle", r.if_in_bundle);
    Add("l2_bundle", r.l2_bundle).Add("l2_sub_if", r.l2_sub_if);
    Add("point_to_point", r.point_to_point).Add("if_multicast", r.if_multicast);
  }
  void Members(const IntfEntry::TypeInfo& r) {
    Add("interfaceType", r.interfaceType);
    Lines(out_, prefix_ + "interfaceFlags.").Members(r.interfaceFlags);
    Add("vlanType", r.vlanType);
  }
  void Members(const IntfEntry::BlockInfo& r) { Add("protocol", r.protocol).Add("state", r.state); }
  void Members(const IntfEntry& r) {
    Add("id", r.getId()).Add("parent", r.getParent());
    Lines(out_, "generalInfo.").Members(r.getGeneralInfo());
    Lines(out_, "statusInfo.").Members(r.getStatusInfo());
    Lines(out_, "physicalInfo.").Members(r.getPhysicalInfo());
    Lines(out_, "typeInfo.").Members(r.getTypeInfo());
    Add("interfaceCategory", r.getInterfaceCategory());
    int place = 0;
    for (const ProtocolType protocol : r.getShutdownProtos()) {
      Add("shutdownProtos[" + std::to_string(place++) + "]", protocol);
    }
    place = 0;
    for (const IntfEntry::BlockInfo& block : r.getBlockInfo()) {
      Lines(out_, "blockInfo[" + std::to_string(place++) + "].").Members(block);
    }
  }
  void Members(const ShutStateInfoSyncSignal& r) {
    Add("protocol", r.protocol);
    for (const auto& [id, state] : r.shutStates) Add(Text(id), state);
  }
  void Members(const BlockStateInfoSyncSignal& r) {
    Add("protocol", r.protocol);
    for (const auto& [id, state] : r.blockStates) Add(Text(id), state);
  }
  void Members(const ZORL2InfoClientConfig& r) {
    Add("protocolType", r.protocolType);
    for (const InterfaceCategory category : r.interfaceCategories) Add("category", category);
    Add("clientAddress", r.clientAddress).Add("token", r.token);
  }
  void Members(const LagMemberOperation& r) {
    Add("lag", r.lag).Add("member", r.member).Add("token", r.token);
    Add("managerData", r.managerData).Add("collecting", r.collecting);
    Add("distributing", r.distributing);
  }

 private:
  std::string& out_;
  std::string prefix_;
};

template <typename Record>
std::string TextOf(const Record& record) {
  std::string out;
  Lines(out).Members(record);
  return out;
}

std::vector<std::string> Split(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace

std::string Text(const zorid_t& id) {
  std::string out = std::to_string(id.octets[0]);
  for (int i = 1; i < 4; ++i) (out += '.') += std::to_string(id.octets[i]);
  return out;
}
std::string Text(const IntfEntry::GeneralInfo& record) { return TextOf(record); }
std::string Text(const IntfEntry::StatusInfo& record) { return TextOf(record); }
std::string Text(const IntfEntry::PhysicalInfo& record) { return TextOf(record); }
std::string Text(const IntfEntry::InterfaceFlags& record) { return TextOf(record); }
std::string Text(const IntfEntry::TypeInfo& record) { return TextOf(record); }
std::string Text(const IntfEntry::BlockInfo& record) { return TextOf(record); }
std::string Text(const IntfEntry& record) { return TextOf(record); }
std::string Text(const ShutStateInfoSyncSignal& record) { return TextOf(record); }
std::string Text(const BlockStateInfoSyncSignal& record) { return TextOf(record); }
std::string Text(const ZORL2InfoClientConfig& record) { return TextOf(record); }
std::string Text(const LagMemberOperation& record) { return TextOf(record); }

std::string TextDifference(const std::string& expected, const std::string& actual) {
  const std::vector<std::string> wanted = Split(expected);
  const std::vector<std::string> got = Split(actual);
  std::string report;
  const auto add_missing = [&report](const char* mark, const auto& from, const auto& in) {
    for (const std::string& line : from) {
      if (std::find(in.begin(), in.end(), line) == in.end()) report += mark + line + "\n";
    }
  };
  add_missing("- ", wanted, got);
  add_missing("+ ", got, wanted);
  // The same lines in another order or number.
  if (report.empty() && expected != actual) report = "- " + expected + "+ " + actual;
  return report;
}

}  // namespace zorl2_test
