#include "check/internal/loss_text.h"

#include <cstdio>
#include <string_view>

namespace zorl2::check::internal {
namespace {

using google::protobuf::UnknownField;

std::string QuotedText(std::string_view bytes) {
  constexpr std::size_t kLongest = 64;
  std::string text = "\"";
  for (const char c : bytes.substr(0, kLongest)) {
    if (c >= ' ' && c <= '~' && c != '"' && c != '\\') {
      text += c;
    } else {
      char escaped[5];
      std::snprintf(escaped, sizeof(escaped), "\\x%02x", static_cast<unsigned char>(c));
      text += escaped;
    }
  }
  text += '"';
  if (bytes.size() > kLongest) text += "... (" + std::to_string(bytes.size()) + " bytes)";
  return text;
}

}  // namespace

std::string DottedText(const zorid_t& id) {
  return DottedText({id.octets[0], id.octets[1], id.octets[2], id.octets[3]}, 4);
}

std::string DottedText(const std::vector<std::uint32_t>& first_values, int count) {
  std::string text;
  for (const std::uint32_t value : first_values) {
    if (!text.empty()) text += '.';
    text += std::to_string(value);
  }
  if (count == 4) return text;
  if (static_cast<std::size_t>(count) > first_values.size()) text += "...";
  if (!text.empty()) text += ' ';
  return text + "(" + std::to_string(count) + (count == 1 ? " value)" : " values)");
}

std::string UnknownText(const UnknownField& field) {
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return std::to_string(field.varint());
    case UnknownField::TYPE_FIXED32:
      return std::to_string(field.fixed32());
    case UnknownField::TYPE_FIXED64:
      return std::to_string(field.fixed64());
    case UnknownField::TYPE_LENGTH_DELIMITED:
      return QuotedText(field.length_delimited());
    default:
      return "group of " + std::to_string(field.group().field_count()) + " fields";
  }
}

}  // namespace zorl2::check::internal
