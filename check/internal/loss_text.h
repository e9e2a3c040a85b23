// Not installed. Formats the values that are lost.
#pragma once

#include <google/protobuf/reflection.h>
#include <google/protobuf/unknown_field_set.h>

#include <cstdint>
#include <string>

#include "native/zorid.h"

namespace zorl2::check::internal {

// Formats an identifier as "0.0.1.44".
std::string DottedText(const zorid_t& id);

// Formats an identifier of a message. Appends the number of values to a malformed one:
// "7.8 (2 values)".
std::string DottedText(const google::protobuf::RepeatedFieldRef<std::uint32_t>& values);

// A number, a text in quotes, or the number of fields in a group. A long text is cut.
std::string UnknownText(const google::protobuf::UnknownField& field);

}  // namespace zorl2::check::internal
