// The values that an operator writes.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// Whether the text fits the pattern: * matches any characters, ? matches one byte.
bool FitsPattern(std::string_view text, std::string_view pattern);
bool IsPattern(std::string_view text);

// The value of the enumeration with this name or number. Accepts the end of a name after an
// underscore if only one name has this end ("up" for IF_ADMIN_UP), in upper or lower case. Null if
// there is none.
const google::protobuf::EnumValueDescriptor* FindEnumValue(
    const google::protobuf::EnumDescriptor& type, std::string_view text);

// The names of an enumeration, separated by commas.
std::string EnumNames(const google::protobuf::EnumDescriptor& type);

// A number, decimal or hexadecimal with 0x.
std::optional<std::uint64_t> ParseUnsigned(std::string_view text);
std::optional<std::int64_t> ParseSigned(std::string_view text);

// A rate in kbit/s, or with a unit: "10G", "2.5 Gb/s", "100M".
std::optional<std::uint64_t> ParseRate(std::string_view text);

// The values between the dots. Nothing for a text that is no identifier; it may have any size.
std::optional<std::vector<std::uint32_t>> ParseDotted(std::string_view text);

std::string Uppercase(std::string_view text);
// Without blanks at both ends.
std::string_view Trimmed(std::string_view text);

}  // namespace zorl2_inspect
