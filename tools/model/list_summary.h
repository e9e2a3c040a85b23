// What a list or stream of interfaces is like.
#pragma once

#include <google/protobuf/message.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "check/check.h"
#include "interface_entry.pb.h"
#include "tools/model/examples.h"
#include "tools/model/front_panel.h"
#include "tools/model/odd_values.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

// Whether a message of the type is an entry or has entries.
bool HasEntries(const google::protobuf::Descriptor& type);

// Its memory does not grow with the number of entries.
struct ListSummary {
  // The message has a type with entries.
  void Add(const google::protobuf::Message& message);

  std::uint64_t entries = 0;
  std::array<std::uint64_t, zorl2::protobuf::InterfaceCategory_ARRAYSIZE> categories = {};
  std::array<std::uint64_t, zorl2::protobuf::InterfaceType_ARRAYSIZE> types = {};
  std::array<std::uint64_t, zorl2::protobuf::AdminStatus_ARRAYSIZE> admin = {};
  std::array<std::uint64_t, zorl2::protobuf::OperationalStatus_ARRAYSIZE> operational = {};
  std::array<std::uint64_t, zorl2::protobuf::LinkStatus_ARRAYSIZE> link = {};
  Examples down_though_enabled;
  // Entries, and those of each protocol.
  std::uint64_t shut = 0;
  std::array<Examples, zorl2::protobuf::ProtocolType_ARRAYSIZE> shut_by;
  std::uint64_t blocked = 0;
  std::array<Examples, zorl2::protobuf::ProtocolType_ARRAYSIZE> blocked_by;
  OddValues odd;
  // By zorl2::check::LossKind.
  std::array<std::uint64_t, 4> lost = {};
  // Entries that do not convert, and why the first does not.
  Examples rejected;
  std::optional<Problem> first_rejection;
  FrontPanel panel;

 private:
  void Add(const zorl2::protobuf::IntfEntry& entry);
  void CountStatus(const zorl2::protobuf::IntfEntry& entry, const std::string& name);
  void CountProtocols(const zorl2::protobuf::IntfEntry& entry, const std::string& name);
  void CountLosses(const std::vector<zorl2::check::Loss>& losses);
};

}  // namespace zorl2_inspect
