#include "tools/model/front_panel.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;

constexpr std::size_t kMostDigits = 4;

bool IsPort(const pb::IntfEntry& entry) {
  return entry.typeinfo().interfacetype() == pb::ETHERNET &&
         (entry.intfcategory() == pb::L1 || entry.intfcategory() == pb::L2);
}

std::optional<FrontPanel::Name> NameOf(const pb::IntfEntry& entry) {
  const std::string& name = entry.generalinfo().intf_name();
  const std::size_t end_of_prefix = name.find_last_not_of("0123456789");
  std::size_t digits = end_of_prefix == std::string::npos ? 0 : end_of_prefix + 1;
  // "ge01" and "ge1" are two names.
  while (digits + 1 < name.size() && name[digits] == '0') ++digits;
  if (digits == name.size() || name.size() - digits > kMostDigits) return std::nullopt;
  std::uint32_t number = 0;
  std::from_chars(name.data() + digits, name.data() + name.size(), number);
  return FrontPanel::Name(name.substr(0, digits), number);
}

bool IsBlocked(const pb::IntfEntry& entry) {
  return std::any_of(
      entry.blockinfo().begin(), entry.blockinfo().end(),
      [](const pb::BlockInfo& info) { return info.state() == pb::BLOCK_STATE_BLOCK; });
}

PortState StateOf(const pb::IntfEntry& entry) {
  if (entry.shutdownprotos_size() > 0) return PortState::kShut;
  if (entry.statusinfo().adminstatus() == pb::IF_ADMIN_DOWN) return PortState::kDisabled;
  if (entry.statusinfo().operationalstatus() == pb::DOWN) return PortState::kDown;
  return IsBlocked(entry) ? PortState::kBlocked : PortState::kUp;
}

}  // namespace

const char* PortStateName(PortState state) {
  static const char* const kNames[] = {"none", "up", "down", "disabled", "shut", "blocked"};
  return kNames[static_cast<std::size_t>(state)];
}

void FrontPanel::Add(const pb::IntfEntry& entry) {
  if (!IsPort(entry)) return;
  const std::optional<Name> name = NameOf(entry);
  if (!name || (ports_.size() == kMostPorts && ports_.count(*name) == 0)) {
    ++without_place_;
  } else {
    ports_[*name] = StateOf(entry);
  }
}

void FrontPanel::Remove(const pb::IntfEntry& entry) {
  const std::optional<Name> name = NameOf(entry);
  if (name) ports_.erase(*name);
}

std::vector<FrontPanel::Bank> FrontPanel::Banks(std::size_t most) const {
  std::vector<Bank> banks;
  for (const auto& [name, state] : ports_) {
    const auto& [prefix, number] = name;
    // Where a number 0 exists, counting begins with it.
    const std::uint32_t base = ports_.count({prefix, 0}) != 0 ? 0 : 1;
    const std::uint32_t place = number - base;
    const std::uint32_t first = base + place / kPortsOfBank * kPortsOfBank;
    if (banks.empty() || banks.back().prefix != prefix || banks.back().first != first) {
      banks.push_back({prefix, first, {}, 0});
    }
    banks.back().ports[place % kPortsOfBank] = state;
    ++banks.back().used;
  }
  while (banks.size() > most) {
    banks.erase(std::min_element(banks.begin(), banks.end(),
                                 [](const Bank& a, const Bank& b) { return a.used < b.used; }));
  }
  return banks;
}

}  // namespace zorl2_inspect
