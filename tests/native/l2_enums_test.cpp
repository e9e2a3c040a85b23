// The numbers of the native enumerations, those nested in the interface entry included.
#include "native/l2_enums.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "native/intf_entry.h"

namespace {

// The values are listed from 0 without a gap, and any signed 32-bit number is one.
template <typename Enum, std::size_t kCount>
constexpr bool CountFromZero(const Enum (&values)[kCount]) {
  static_assert(std::is_same_v<std::underlying_type_t<Enum>, std::int32_t>);
  for (std::size_t i = 0; i < kCount; ++i) {
    if (values[i] != static_cast<Enum>(i)) return false;
  }
  return true;
}

// The unknown protocol comes last, unlike in a message.
static_assert(CountFromZero({LLDP, L2VM, LACP, STP, ERPS, CFM, LBD, LFD, EFM, L1_PROTO, L2_PROTO,
                             BACKUPLINK, PROTOCOL_UNKNOWN}));
static_assert(CountFromZero({BLOCK_STATE_FORWARD, BLOCK_STATE_BLOCK}));
static_assert(CountFromZero({L1, L2, VP, L2_SUB_IF, VIRTUAL_IF}));
static_assert(CountFromZero({IntfEntry::IF_ADMIN_UP, IntfEntry::IF_ADMIN_DOWN}));
static_assert(CountFromZero({IntfEntry::UP, IntfEntry::DOWN}));
static_assert(CountFromZero({IntfEntry::LINK_UP, IntfEntry::LINK_DOWN}));
static_assert(CountFromZero({IntfEntry::MODE_UNKNOWN, IntfEntry::HALF, IntfEntry::FULL}));
static_assert(CountFromZero({IntfEntry::TYPE_UNKNOWN, IntfEntry::OTHER, IntfEntry::ETHERNET,
                             IntfEntry::ETHERNET_L2_VLAN, IntfEntry::ETHERNET_BUNDLE}));
static_assert(CountFromZero({IntfEntry::NONE, IntfEntry::C_VLAN, IntfEntry::S_VLAN,
                             IntfEntry::B_VLAN, IntfEntry::ANY}));
static_assert(
    CountFromZero({IntfEntry::SPEED_UNKNOWN, IntfEntry::SPEED_100_KBS, IntfEntry::SPEED_1_MBS,
                   IntfEntry::SPEED_10_MBS, IntfEntry::SPEED_100_MBS, IntfEntry::SPEED_1_GBS,
                   IntfEntry::SPEED_10_GBS, IntfEntry::SPEED_25_GBS, IntfEntry::SPEED_40_GBS,
                   IntfEntry::SPEED_100_GBS, IntfEntry::SPEED_1_TBS, IntfEntry::SPEED_10_TBS}));

}  // namespace
