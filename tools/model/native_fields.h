// The fields of native records as text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"
#include "tools/model/field_text.h"

namespace zorl2_inspect {

std::string DottedText(const zorid_t& id);

// The name of a protocol, or its number if it has none.
std::string NativeProtocolName(int native);

// A rate in kbit/s such as "10 Gb/s"; "-" for 0.
std::string RateText(std::uint32_t kbps);

// Each field under its path in the message; a state under its interface.
std::vector<PathValue> NativeFields(const zorid_t& id);
std::vector<PathValue> NativeFields(const ::IntfEntry& entry);
std::vector<PathValue> NativeFields(const ZORL2InfoClientConfig& config);
std::vector<PathValue> NativeFields(const LagMemberOperation& operation);
std::vector<PathValue> NativeFields(const ShutStateInfoSyncSignal& signal);
std::vector<PathValue> NativeFields(const BlockStateInfoSyncSignal& signal);

}  // namespace zorl2_inspect
