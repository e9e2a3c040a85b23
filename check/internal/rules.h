// Not installed. The rules by which a conversion fails: their names, conditions and texts.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>

#include "check/check.h"

namespace zorl2::check::internal {

inline bool Fails(const Verdict& verdict) { return verdict.outcome != Outcome::kConverts; }

// required
Verdict MissingField(const google::protobuf::Message& message,
                     const google::protobuf::FieldDescriptor& field);

// identifier.size
Verdict WrongSize(Outcome outcome, std::string field, int values);

// protocol.unlisted. `number` is what the source holds; `protocol` is read if the number is listed.
Verdict CheckSignalProtocol(const char* field, int number, bool is_listed,
                            zorl2::protobuf::ProtocolType protocol);

// enum.unlisted and category.unlisted. The numbers of the eight enumerations are the same on both
// sides.
Verdict CheckEnumerations(const zorl2::protobuf::IntfEntry& message);
Verdict CheckEnumerations(const IntfEntry& record);

}  // namespace zorl2::check::internal
