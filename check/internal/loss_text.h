// Not installed. The order of losses, and the texts of the values in them.
#pragma once

#include <google/protobuf/unknown_field_set.h>

#include <cstdint>
#include <string>
#include <vector>

#include "check/check.h"

namespace zorl2::check::internal {

// By kind; within a kind the order remains.
std::vector<Loss> SortedByKind(std::vector<Loss> losses);

// "0.0.1.44"
std::string DottedText(const zorid_t& id);

// The same of the values of a message. A malformed identifier has its number of values, too: "7.8
// (2 values)".
std::string IdentifierText(const std::vector<std::uint32_t>& first_values, int count);

// A number, a text in quotes, or the number of fields in a group. A long text is cut.
std::string UnknownText(const google::protobuf::UnknownField& field);

}  // namespace zorl2::check::internal
