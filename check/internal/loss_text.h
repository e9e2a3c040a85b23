// Not installed. The texts of values that are lost.
#pragma once

#include <google/protobuf/reflection.h>
#include <google/protobuf/unknown_field_set.h>

#include <cstdint>
#include <string>

#include "native/zorid.h"

namespace zorl2::check::internal {

// "0.0.1.44"
std::string DottedText(const zorid_t& id);

// The same of an identifier in a message. A malformed one has the number of its values, too:
// "7.8 (2 values)".
std::string DottedText(const google::protobuf::RepeatedFieldRef<std::uint32_t>& values);

// A number, a text in quotes, or the number of fields in a group. A long text is cut.
std::string UnknownText(const google::protobuf::UnknownField& field);

}  // namespace zorl2::check::internal
