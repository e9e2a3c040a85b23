// The total translations of protocol types and block states. Pure functions: no state, no
// exception, any thread.
#pragma once

#include "information_client.pb.h"
#include "intf_state.pb.h"
#include "native/export.h"
#include "native/l2_enums.h"

// Each protocol by its name, L1_PROTO and L2_PROTO included; every number outside the enumeration
// becomes PROTOCOL_UNKNOWN, which is 0 in a message.
ZORL2_EXPORT zorl2::protobuf::ProtocolType SerializeProtocolType(ProtocolType native) noexcept;
// The same towards the native side, where PROTOCOL_UNKNOWN is 12.
ZORL2_EXPORT ProtocolType DeserializeProtocolType(zorl2::protobuf::ProtocolType message) noexcept;

// BLOCK_STATE_BLOCK for 1; BLOCK_STATE_FORWARD for every other number.
ZORL2_EXPORT zorl2::protobuf::BlockState SerializeBlockState(BlockState native) noexcept;
// The same towards the native side.
ZORL2_EXPORT BlockState DeserializeBlockState(zorl2::protobuf::BlockState message) noexcept;
