/// \file
/// Translates protocols and block states. The functions accept every value, throw nothing and have
/// no state.
#pragma once

#include "information_client.pb.h"
#include "intf_state.pb.h"
#include "native/export.h"
#include "native/l2_enums.h"

/// Returns the message protocol of the same name, L1_PROTO and L2_PROTO included; PROTOCOL_UNKNOWN
/// (0) for an unlisted value.
ZORL2_EXPORT zorl2::protobuf::ProtocolType SerializeProtocolType(ProtocolType native) noexcept;

/// Returns the native protocol of the same name, L1_PROTO and L2_PROTO included; PROTOCOL_UNKNOWN
/// (12) for an unlisted value.
ZORL2_EXPORT ProtocolType DeserializeProtocolType(zorl2::protobuf::ProtocolType message) noexcept;

/// Returns BLOCK_STATE_BLOCK for 1 and BLOCK_STATE_FORWARD for every other value.
ZORL2_EXPORT zorl2::protobuf::BlockState SerializeBlockState(BlockState native) noexcept;

/// Returns BLOCK_STATE_BLOCK for 1 and BLOCK_STATE_FORWARD for every other value.
ZORL2_EXPORT BlockState DeserializeBlockState(zorl2::protobuf::BlockState message) noexcept;
