// Not installed. The texts of values that are lost.
#pragma once

#include <google/protobuf/unknown_field_set.h>

#include <cstdint>
#include <string>
#include <vector>

#include "native/zorid.h"

namespace zorl2::check::internal {

// "0.0.1.44"
std::string DottedText(const zorid_t& id);

// The first of the `count` values of an identifier in a message, "0.0.1.300". A malformed one has
// their number, too: "7.8 (2 values)".
std::string DottedText(const std::vector<std::uint32_t>& first_values, int count);

// A number, a text in quotes, or the number of fields in a group. A long text is cut.
std::string UnknownText(const google::protobuf::UnknownField& field);

}  // namespace zorl2::check::internal
