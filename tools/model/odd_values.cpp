#include "tools/model/odd_values.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/model/native_fields.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;

// Bounds the memory. A group with more values has no usual value that is worth naming.
constexpr std::size_t kMostValues = 256;
// Fewer entries have no majority.
constexpr std::uint64_t kFewest = 3;

}  // namespace

void OddValues::Add(const pb::IntfEntry& entry, const std::string& name) {
  const pb::PhysicalInfo& physical = entry.physicalinfo();
  if (physical.has_intf_mtu()) Count(Field::kMtu, entry, physical.intf_mtu(), name);
  if (entry.statusinfo().operationalspeed() != 0) {
    Count(Field::kSpeed, entry, entry.statusinfo().operationalspeed(), name);
  }
  if (physical.eth_duplex_mode() != pb::MODE_UNKNOWN) {
    Count(Field::kDuplex, entry, static_cast<std::uint32_t>(physical.eth_duplex_mode()), name);
  }
}

void OddValues::Count(Field field, const pb::IntfEntry& entry, std::uint32_t value,
                      const std::string& name) {
  Group& group = groups_[{field, entry.typeinfo().interfacetype(), entry.intfcategory()}];
  ++group.entries;
  if (group.values.size() == kMostValues && group.values.count(value) == 0) return;
  group.values[value].Add(name);
}

const char* OddValues::FieldName(Field field) {
  static const char* const kNames[] = {"mtu", "speed", "duplex"};
  return kNames[static_cast<int>(field)];
}

std::string OddValues::ValueText(Field field, std::uint32_t value) {
  switch (field) {
    case Field::kSpeed:
      return RateText(value);
    case Field::kDuplex:
      return pb::EthernetDuplexMode_Name(static_cast<pb::EthernetDuplexMode>(value));
    default:
      return fmt::format("{}", value);
  }
}

std::vector<OddValues::Odd> OddValues::Find() const {
  std::vector<Odd> all;
  for (const auto& [key, group] : groups_) {
    const auto usual = std::max_element(
        group.values.begin(), group.values.end(),
        [](const auto& a, const auto& b) { return a.second.count < b.second.count; });
    const std::uint64_t alike = usual->second.count;
    if (group.entries < kFewest || alike == group.entries || 2 * alike <= group.entries) continue;
    const auto [field, type, category] = key;
    Odd odd{field, type, category, group.entries, usual->first, group.entries - alike, {}};
    for (const auto& [value, examples] : group.values) {
      if (value == usual->first) continue;
      for (const std::string& name : examples.names) {
        if (odd.examples.size() == Examples::kMost) break;
        odd.examples.emplace_back(name, value);
      }
    }
    all.push_back(std::move(odd));
  }
  return all;
}

}  // namespace zorl2_inspect
