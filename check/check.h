// Tells what a conversion will do with a message or a record, and why, without converting it.
#pragma once

#include <google/protobuf/message.h>

#include <string>
#include <string_view>
#include <vector>

#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"
#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "native/zorid.h"
#include "zorid.pb.h"

// Check() and FindLosses() do not change their argument, do not end the process, and throw nothing
// but std::bad_alloc. They allocate nothing for an argument that converts, or converts without a
// loss. Any number of threads may call them at once, as long as nobody changes the argument.
//
// Fields have the names of the schema in both directions: "intfs[3].zorid" is the identifier of the
// fourth element of a signal, or of the fourth entry of its map.
namespace zorl2::check {

// How Convert() ends.
enum class Outcome {
  kConverts,      // It returns true.
  kReturnsFalse,  // It returns false.
  kThrows,        // It throws std::out_of_range.
  kEndsProcess,   // It reports a fault and ends the process.
};

// What Convert() does, and the first reason in the order in which it reads the fields. Programs
// compare `rule`, which does not change; people read `field` and `reason`, which may.
//
// The rules are
//   required            a required field is missing
//   identifier.size     an identifier does not have exactly four values where that is rejected
//   identifier.missing  a member operation has no `lag` or no `member`
//   enum.unlisted       an unlisted value; throws boost::wrapexcept<std::out_of_range>,
//                       "bimap<>: invalid key"
//   category.unlisted   an unlisted category; throws std::out_of_range, "map::at"
//   protocol.unlisted   a state signal for L1_PROTO, L2_PROTO or an unlisted protocol; throws
//                       std::out_of_range, "map::at"
struct Verdict {
  Outcome outcome = Outcome::kConverts;  // How the conversion ends.
  std::string_view rule;                 // The name of the rule; empty if it converts.
  std::string field;                     // The path of the field; empty if it converts.
  std::string reason;                    // What was found and what was expected.
};

// Message to native.

// ZORIDConverter.
inline Verdict Check(const zorl2::protobuf::Zorid& message);
// IntfEntryConverter.
Verdict Check(const zorl2::protobuf::IntfEntry& message);
// ShutStateConverter.
Verdict Check(const zorl2::protobuf::ShutStateSync& message);
// BlockStateConverter.
Verdict Check(const zorl2::protobuf::BlockStateSync& message);
// ZORL2InfoClientConfigConverter.
Verdict Check(const zorl2::protobuf::InformationClient& message);
// LagMemberConverter.
inline Verdict Check(const zorl2::protobuf::LagMemberOperationProto& message);

// A message whose type is known at run time, also a DynamicMessage. A message of another type than
// the six above is checked for its required fields, and the messages of these types in it are
// checked one by one, for example the entries of an IntfEntryList. The first that fails decides.
// Only a Zorid is not checked in a message of another type: no converter reads it there.
Verdict Check(const google::protobuf::Message& message);

// Native to message.

// ZORIDConverter: always converts.
inline Verdict Check(const zorid_t& record);
// IntfEntryConverter.
Verdict Check(const IntfEntry& record);
// ShutStateConverter.
Verdict Check(const ShutStateInfoSyncSignal& record);
// BlockStateConverter.
Verdict Check(const BlockStateInfoSyncSignal& record);
// ZORL2InfoClientConfigConverter: always converts.
inline Verdict Check(const ZORL2InfoClientConfig& record);
// LagMemberConverter: always converts.
inline Verdict Check(const LagMemberOperation& record);

// Why a value does not survive a conversion, the most serious kind first.
enum class LossKind {
  kReplaced,      // Another value takes its place, or none.
  kNarrowed,      // The upper bits are dropped.
  kUnknownField,  // A field that the schema does not list, or an unlisted value of one that it
                  // does.
  kDefaulted,     // An absent field comes back with its default.
};

// One value that a successful conversion does not carry over.
struct Loss {
  LossKind kind = LossKind::kReplaced;  // Why it is lost.
  std::string field;                    // Its path; an unknown field is "#50".
  std::string before;                   // The value; empty for an absent field.
  std::string after;                    // What takes its place; empty if nothing does.
};

// FindLosses() returns what a successful conversion does not carry over: by kind, then in the order
// of the fields. The result is empty if the conversion there and back gives an equal message or
// record, and if the conversion fails.

// Message to native, into an empty record. Of two elements of a state signal for one interface the
// earlier is a loss. Elements that do not ascend are one loss at `intfs`.

// ZORIDConverter.
std::vector<Loss> FindLosses(const zorl2::protobuf::Zorid& message);
// IntfEntryConverter.
std::vector<Loss> FindLosses(const zorl2::protobuf::IntfEntry& message);
// ShutStateConverter.
std::vector<Loss> FindLosses(const zorl2::protobuf::ShutStateSync& message);
// BlockStateConverter.
std::vector<Loss> FindLosses(const zorl2::protobuf::BlockStateSync& message);
// ZORL2InfoClientConfigConverter.
std::vector<Loss> FindLosses(const zorl2::protobuf::InformationClient& message);
// LagMemberConverter.
std::vector<Loss> FindLosses(const zorl2::protobuf::LagMemberOperationProto& message);

// A message whose type is known at run time, as for Check(). A message that holds messages of the
// six types loses what they lose, and its own unknown fields.
std::vector<Loss> FindLosses(const google::protobuf::Message& message);

// Native to message.

// ZORIDConverter: no losses.
std::vector<Loss> FindLosses(const zorid_t& record);
// IntfEntryConverter.
std::vector<Loss> FindLosses(const IntfEntry& record);
// ShutStateConverter: no losses.
std::vector<Loss> FindLosses(const ShutStateInfoSyncSignal& record);
// BlockStateConverter.
std::vector<Loss> FindLosses(const BlockStateInfoSyncSignal& record);
// ZORL2InfoClientConfigConverter. An element of the set that is no category is left out.
std::vector<Loss> FindLosses(const ZORL2InfoClientConfig& record);
// LagMemberConverter. `managerData` is not part of the message: it is kDefaulted if it is not 0.
std::vector<Loss> FindLosses(const LagMemberOperation& record);

// Inline, because these conversions take about as long as a call.

// Not for callers.
namespace internal {

// The number of values of an identifier.
constexpr int kOctets = 4;
// The number of values of an absent identifier.
constexpr int kAbsent = -1;

// The verdict on an identifier of another size.
Verdict RejectIdentifier(int values);
// The verdict on two identifiers, if one of them is absent or of another size.
Verdict RejectOperation(int lag_values, int member_values);

// The verdict on an identifier.
inline Verdict CheckIdentifier(int values) {
  return values == kOctets ? Verdict{} : RejectIdentifier(values);
}

// The verdict on the two identifiers of a member operation.
inline Verdict CheckOperation(int lag_values, int member_values) {
  const bool converts = lag_values == kOctets && member_values == kOctets;
  return converts ? Verdict{} : RejectOperation(lag_values, member_values);
}

}  // namespace internal

inline Verdict Check(const zorl2::protobuf::Zorid& message) {
  return internal::CheckIdentifier(message.value_size());
}

inline Verdict Check(const zorl2::protobuf::LagMemberOperationProto& message) {
  return internal::CheckOperation(
      message.has_lag() ? message.lag().value_size() : internal::kAbsent,
      message.has_member() ? message.member().value_size() : internal::kAbsent);
}

inline Verdict Check(const zorid_t&) { return {}; }
inline Verdict Check(const ZORL2InfoClientConfig&) { return {}; }
inline Verdict Check(const LagMemberOperation&) { return {}; }

}  // namespace zorl2::check
