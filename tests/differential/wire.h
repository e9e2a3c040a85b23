// Between the plain messages of the oracle and the generated ones: a hand-written encoder, setters,
// getters. Compiled with NDEBUG, so that an enumeration may hold an unlisted value.
#pragma once

#include <string>

#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"
#include "tests/differential/oracle.h"

namespace proof {

// The bytes of a message: fields in the order of their numbers, without absent ones.
std::string Encode(const oracle::Zorid& message);
std::string Encode(const oracle::General& message);
std::string Encode(const oracle::Status& message);
std::string Encode(const oracle::Physical& message);
std::string Encode(const oracle::Flags& message);
std::string Encode(const oracle::Type& message);
std::string Encode(const oracle::Block& message);
std::string Encode(const oracle::Entry& message);
std::string Encode(const oracle::Signal& message);
std::string Encode(const oracle::Categories& message);
std::string Encode(const oracle::Client& message);
std::string Encode(const oracle::Lag& message);

// Sets the fields that have a value, and no others.
void Fill(const oracle::Zorid& from, zorl2::protobuf::Zorid& to);
void Fill(const oracle::General& from, zorl2::protobuf::GeneralInfo& to);
void Fill(const oracle::Status& from, zorl2::protobuf::StatusInfo& to);
void Fill(const oracle::Physical& from, zorl2::protobuf::PhysicalInfo& to);
void Fill(const oracle::Flags& from, zorl2::protobuf::InterfaceFlags& to);
void Fill(const oracle::Type& from, zorl2::protobuf::TypeInfo& to);
void Fill(const oracle::Block& from, zorl2::protobuf::BlockInfo& to);
void Fill(const oracle::Entry& from, zorl2::protobuf::IntfEntry& to);
void Fill(const oracle::Signal& from, zorl2::protobuf::ShutStateSync& to);
void Fill(const oracle::Signal& from, zorl2::protobuf::BlockStateSync& to);
void Fill(const oracle::Categories& from, zorl2::protobuf::IntfCategory& to);
void Fill(const oracle::Client& from, zorl2::protobuf::InformationClient& to);
void Fill(const oracle::Lag& from, zorl2::protobuf::LagMemberOperationProto& to);

// Reads a message through its getters.
oracle::Zorid Read(const zorl2::protobuf::Zorid& message);
oracle::General Read(const zorl2::protobuf::GeneralInfo& message);
oracle::Status Read(const zorl2::protobuf::StatusInfo& message);
oracle::Physical Read(const zorl2::protobuf::PhysicalInfo& message);
oracle::Flags Read(const zorl2::protobuf::InterfaceFlags& message);
oracle::Type Read(const zorl2::protobuf::TypeInfo& message);
oracle::Block Read(const zorl2::protobuf::BlockInfo& message);
oracle::Entry Read(const zorl2::protobuf::IntfEntry& message);
oracle::Signal Read(const zorl2::protobuf::ShutStateSync& message);
oracle::Signal Read(const zorl2::protobuf::BlockStateSync& message);
oracle::Categories Read(const zorl2::protobuf::IntfCategory& message);
oracle::Client Read(const zorl2::protobuf::InformationClient& message);
oracle::Lag Read(const zorl2::protobuf::LagMemberOperationProto& message);

}  // namespace proof
