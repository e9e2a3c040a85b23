// Native records as text that names every member, so that two records are equal exactly when their
// texts are, and a difference can be read.
#pragma once

#include <string>

#include "tests/support/oracle.h"

namespace proof {

std::string Text(const zorid_t& record);
std::string Text(const IntfEntry::GeneralInfo& record);
std::string Text(const IntfEntry::StatusInfo& record);
std::string Text(const IntfEntry::PhysicalInfo& record);
std::string Text(const IntfEntry::InterfaceFlags& record);
std::string Text(const IntfEntry::TypeInfo& record);
std::string Text(const IntfEntry::BlockInfo& record);
std::string Text(const oracle::EntryRecord& record);
std::string Text(const IntfEntry& record);
std::string Text(const ShutStateInfoSyncSignal& record);
std::string Text(const BlockStateInfoSyncSignal& record);
std::string Text(const ZORL2InfoClientConfig& record);
std::string Text(const LagMemberOperation& record);

// The record that the manager would have built from these members, and its members again.
IntfEntry Build(const oracle::EntryRecord& record);
oracle::EntryRecord Open(const IntfEntry& entry);

}  // namespace proof
