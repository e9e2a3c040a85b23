// Native records as text, one line for each member: "typeInfo.vlanType: 3". Two records are equal
// if and only if their texts are equal.
#pragma once

#include <string>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"

namespace zorl2_test {

std::string Text(const zorid_t& id);  // "1.2.3.4", without a line of its own.
std::string Text(const IntfEntry::GeneralInfo& record);
std::string Text(const IntfEntry::StatusInfo& record);
std::string Text(const IntfEntry::PhysicalInfo& record);
std::string Text(const IntfEntry::InterfaceFlags& record);
std::string Text(const IntfEntry::TypeInfo& record);
std::string Text(const IntfEntry::BlockInfo& record);
std::string Text(const IntfEntry& record);
std::string Text(const ShutStateInfoSyncSignal& record);
std::string Text(const BlockStateInfoSyncSignal& record);
std::string Text(const ZORL2InfoClientConfig& record);
std::string Text(const LagMemberOperation& record);

// The lines that only one of two texts has: "- " for the expected, "+ " for the actual text.
std::string TextDifference(const std::string& expected, const std::string& actual);

}  // namespace zorl2_test
