/// \file
/// Tells what a conversion will do with a message or a record, and why, without converting it.
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

/// Check() and FindLosses() do not change their argument and do not terminate the process. They
/// throw nothing but std::bad_alloc. Check() allocates nothing for an argument that converts,
/// FindLosses() allocates nothing for one that loses nothing. Any number of threads may call them
/// at once, as long as no thread changes the argument.
///
/// Fields have the names of the schema in both directions: "intfs[3].zorid" is the identifier of
/// the fourth element of a signal, or of the fourth entry of its map.
namespace zorl2::check {

/// How Convert() ends.
enum class Outcome {
  kConverts,      ///< It returns true.
  kReturnsFalse,  ///< It returns false.
  kThrows,        ///< It throws std::out_of_range.
  kEndsProcess,   ///< It reports a fault and terminates the process.
};

/// What Convert() does, and the first reason in the order in which it reads the fields.
///
/// Programs compare `rule`, which does not change. People read `field` and `reason`; the words of a
/// reason may change. The rules:
/// - `required`: a required field is missing.
/// - `identifier.size`: an identifier that a converter rejects does not have exactly four values.
/// - `identifier.missing`: a member operation has no `lag` or no `member`.
/// - `enum.unlisted`: an unlisted value; throws boost::wrapexcept<std::out_of_range>,
///   "bimap<>: invalid key".
/// - `category.unlisted`: an unlisted category of an entry; throws std::out_of_range, "map::at".
/// - `protocol.unlisted`: a state signal for L1_PROTO, L2_PROTO or an unlisted protocol; throws
///   std::out_of_range, "map::at".
struct Verdict {
  Outcome outcome = Outcome::kConverts;  ///< How the conversion ends.
  std::string_view rule;                 ///< The name of the rule; empty if it converts.
  std::string field;                     ///< The path of the field; empty if it converts.
  std::string reason;                    ///< What was found and expected; empty if it converts.
};

/// Returns what ZORIDConverter will do with an identifier.
inline Verdict Check(const zorl2::protobuf::Zorid& message);
/// Returns what IntfEntryConverter will do with an interface entry.
Verdict Check(const zorl2::protobuf::IntfEntry& message);
/// Returns what ShutStateConverter will do with a shutdown signal.
Verdict Check(const zorl2::protobuf::ShutStateSync& message);
/// Returns what BlockStateConverter will do with a blocking signal.
Verdict Check(const zorl2::protobuf::BlockStateSync& message);
/// Returns what ZORL2InfoClientConfigConverter will do with a registration.
Verdict Check(const zorl2::protobuf::InformationClient& message);
/// Returns what LagMemberConverter will do with a member operation.
inline Verdict Check(const zorl2::protobuf::LagMemberOperationProto& message);

/// Returns the verdict on a message whose type is known at run time, also on a DynamicMessage.
///
/// A message of another type than the six above is checked for its required fields, and the
/// messages of these types in it are checked one by one, for example the entries of an
/// IntfEntryList. The first that fails decides. Only a Zorid is not checked in a message of another
/// type: no converter reads it there.
Verdict Check(const google::protobuf::Message& message);

/// Returns what the conversion of an identifier to a message will do: it always converts.
inline Verdict Check(const zorid_t& record);
/// Returns what the conversion of an interface entry to a message will do.
Verdict Check(const IntfEntry& record);
/// Returns what the conversion of a shutdown signal to a message will do.
Verdict Check(const ShutStateInfoSyncSignal& record);
/// Returns what the conversion of a blocking signal to a message will do.
Verdict Check(const BlockStateInfoSyncSignal& record);
/// Returns what the conversion of a registration to a message will do: it always converts.
inline Verdict Check(const ZORL2InfoClientConfig& record);
/// Returns what the conversion of a member operation to a message will do: it always converts.
inline Verdict Check(const LagMemberOperation& record);

/// Why a value does not survive a conversion. The most serious kind comes first.
enum class LossKind {
  kReplaced,      ///< Another value takes its place, or none.
  kNarrowed,      ///< Its upper bits are dropped.
  kUnknownField,  ///< The schema does not list the field, or its enumeration not the value.
  kDefaulted,     ///< An absent field comes back with its default.
};

/// A value that a successful conversion does not carry over.
struct Loss {
  LossKind kind = LossKind::kReplaced;  ///< Why it is lost.
  std::string field;                    ///< Its path; the last name of an unknown field is "#50".
  std::string before;                   ///< The value; empty for an absent field.
  std::string after;                    ///< What takes its place; empty if nothing does.
};

// FindLosses() returns the losses by kind, then in the order of the fields. There are none if the
// conversion there and back gives an equal message or record, and none if the conversion fails.

/// Returns what ZORIDConverter loses of an identifier.
std::vector<Loss> FindLosses(const zorl2::protobuf::Zorid& message);
/// Returns what IntfEntryConverter loses of an interface entry.
std::vector<Loss> FindLosses(const zorl2::protobuf::IntfEntry& message);
/// Returns what ShutStateConverter loses of a shutdown signal, given an empty map. Of two
/// elements for one interface the earlier is a loss. Elements that do not ascend are one loss at
/// `intfs`.
std::vector<Loss> FindLosses(const zorl2::protobuf::ShutStateSync& message);
/// Returns what BlockStateConverter loses of a blocking signal, given an empty map. The
/// elements are treated as those of a shutdown signal.
std::vector<Loss> FindLosses(const zorl2::protobuf::BlockStateSync& message);
/// Returns what ZORL2InfoClientConfigConverter loses of a registration, given an empty set.
std::vector<Loss> FindLosses(const zorl2::protobuf::InformationClient& message);
/// Returns what LagMemberConverter loses of a member operation.
std::vector<Loss> FindLosses(const zorl2::protobuf::LagMemberOperationProto& message);

/// Returns the losses of a message whose type is known at run time, as for Check(). A message that
/// holds messages of the six types loses what they lose, and its own unknown fields.
std::vector<Loss> FindLosses(const google::protobuf::Message& message);

/// Returns what the conversion of an identifier to a message loses: nothing.
std::vector<Loss> FindLosses(const zorid_t& record);
/// Returns what the conversion of an interface entry to a message loses.
std::vector<Loss> FindLosses(const IntfEntry& record);
/// Returns what the conversion of a shutdown signal to a message loses: nothing.
std::vector<Loss> FindLosses(const ShutStateInfoSyncSignal& record);
/// Returns what the conversion of a blocking signal to a message loses.
std::vector<Loss> FindLosses(const BlockStateInfoSyncSignal& record);
/// Returns what the conversion of a registration to a message loses: an unlisted
/// protocol, and each element of the set that is no category.
std::vector<Loss> FindLosses(const ZORL2InfoClientConfig& record);
/// Returns what the conversion of a member operation to a message loses:
/// `managerData`, which is no field of the message, unless it is 0.
std::vector<Loss> FindLosses(const LagMemberOperation& record);

/// Not for callers. Inline, because the conversions of these messages take about as long as a call.
namespace internal {

/// The number of values of an identifier.
constexpr int kOctets = 4;
/// The number of values of an absent identifier.
constexpr int kAbsent = -1;

/// Returns the verdict on an identifier of another size.
Verdict RejectIdentifier(int values);
/// Returns the verdict on two identifiers of which one is absent or of another size.
Verdict RejectOperation(int lag_values, int member_values);

/// Returns the verdict on an identifier.
inline Verdict CheckIdentifier(int values) {
  return values == kOctets ? Verdict{} : RejectIdentifier(values);
}

/// Returns the verdict on the two identifiers of a member operation.
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
