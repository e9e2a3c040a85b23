// Counts the contents of messages.
#pragma once

#include <google/protobuf/message.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"

namespace zorl2_inspect {

// Indexed by the numbers of an enumeration of the schema; a parsed message holds no other.
template <int kSize>
using EnumCounts = std::array<std::uint64_t, kSize>;

// A heading and the counts under it.
struct CountSection {
  std::string title;
  std::vector<std::pair<std::string, std::uint64_t>> counts;
};

// The number of counters does not grow with the number of messages.
class EntryCounts {
 public:
  // Counts the message and the messages in it.
  void Add(const google::protobuf::Message& message);

  // Leaves out what is 0.
  std::vector<CountSection> Sections() const;

 private:
  void Add(const zorl2::protobuf::IntfEntry& entry);
  void Add(const zorl2::protobuf::InformationClient& client);
  void Add(const zorl2::protobuf::ShutStateSync& signal);
  void Add(const zorl2::protobuf::BlockStateSync& signal);
  void Add(const zorl2::protobuf::LagMemberOperationProto& operation);
  // Counts the enumerations and truth values of a message of any other type.
  void AddFields(const google::protobuf::Message& message);

  std::uint64_t entries_ = 0;
  std::uint64_t shut_entries_ = 0;
  std::uint64_t blocked_entries_ = 0;
  std::uint64_t clients_ = 0;
  std::uint64_t signals_ = 0;
  std::uint64_t signalled_ = 0;
  std::uint64_t signalled_on_ = 0;
  std::uint64_t operations_ = 0;
  std::uint64_t collecting_ = 0;
  std::uint64_t distributing_ = 0;
  EnumCounts<zorl2::protobuf::InterfaceType_ARRAYSIZE> types_ = {};
  EnumCounts<zorl2::protobuf::InterfaceCategory_ARRAYSIZE> categories_ = {};
  EnumCounts<zorl2::protobuf::VlanType_ARRAYSIZE> vlan_types_ = {};
  EnumCounts<zorl2::protobuf::AdminStatus_ARRAYSIZE> admin_ = {};
  EnumCounts<zorl2::protobuf::OperationalStatus_ARRAYSIZE> operational_ = {};
  EnumCounts<zorl2::protobuf::LinkStatus_ARRAYSIZE> link_ = {};
  EnumCounts<zorl2::protobuf::EthernetSpeed_ARRAYSIZE> speeds_ = {};
  EnumCounts<zorl2::protobuf::ProtocolType_ARRAYSIZE> shutting_ = {};
  EnumCounts<zorl2::protobuf::ProtocolType_ARRAYSIZE> blocking_ = {};
  EnumCounts<zorl2::protobuf::ProtocolType_ARRAYSIZE> forwarding_ = {};
  EnumCounts<zorl2::protobuf::ProtocolType_ARRAYSIZE> client_protocols_ = {};
  EnumCounts<zorl2::protobuf::ProtocolType_ARRAYSIZE> signal_protocols_ = {};
  EnumCounts<zorl2::protobuf::IndicationType_ARRAYSIZE> indications_ = {};
  // For the other types: "BlockInfo.protocol" and its values. The schema bounds how many there are.
  std::map<std::string, std::map<std::string, std::uint64_t>> fields_;
};

}  // namespace zorl2_inspect
