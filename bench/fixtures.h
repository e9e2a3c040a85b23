// The measured records. Each is made from a number, so that the records of a batch differ and every
// run has the same ones.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"

namespace zorl2_bench {

zorid_t Identifier(std::uint32_t number);

// Has a name of 20 characters, two addresses of 17, a parent, 2 shutdown protocols and 3 block
// entries. The strings are too long to be stored in place.
IntfEntry Entry(std::uint32_t number);

ZORL2InfoClientConfig Registration(std::uint32_t number);
LagMemberOperation Operation(std::uint32_t number);

// `count` interfaces with their states, in ascending or in a fixed shuffled order.
enum class Order { kSorted, kShuffled };
std::vector<std::pair<zorid_t, bool>> ShutStates(int count, Order order);
std::vector<std::pair<zorid_t, BlockState>> BlockStates(int count, Order order);

}  // namespace zorl2_bench
