// What is special about a generated input: the conditions of docs/behaviour.md that it meets, and
// how many inputs met each.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/differential/oracle.h"

namespace proof {

using Kinds = std::set<std::string>;
using Tally = std::map<std::string, int>;

Kinds KindsOf(const oracle::Zorid& message);
Kinds KindsOf(const oracle::General& message);
Kinds KindsOf(const oracle::Status& message);
Kinds KindsOf(const oracle::Physical& message);
Kinds KindsOf(const oracle::Flags& message);
Kinds KindsOf(const oracle::Type& message);
Kinds KindsOf(const oracle::Block& message);
Kinds KindsOf(const oracle::Entry& message);
Kinds KindsOf(const oracle::Signal& message);
Kinds KindsOf(const oracle::Client& message);
Kinds KindsOf(const oracle::Lag& message);

Kinds KindsOf(const zorid_t& record);
Kinds KindsOf(const IntfEntry::GeneralInfo& record);
Kinds KindsOf(const IntfEntry::StatusInfo& record);
Kinds KindsOf(const IntfEntry::PhysicalInfo& record);
Kinds KindsOf(const IntfEntry::InterfaceFlags& record);
Kinds KindsOf(const IntfEntry::TypeInfo& record);
Kinds KindsOf(const IntfEntry::BlockInfo& record);
Kinds KindsOf(const oracle::EntryRecord& record);
Kinds KindsOf(const ShutStateInfoSyncSignal& record);
Kinds KindsOf(const BlockStateInfoSyncSignal& record);
Kinds KindsOf(const ZORL2InfoClientConfig& record);
Kinds KindsOf(const LagMemberOperation& record);

}  // namespace proof
