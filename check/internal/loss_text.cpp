#include "check/internal/loss_text.h"

#include <algorithm>
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
  std::string text;
  for (const std::uint8_t octet : id.octets) {
    if (!text.empty()) text += '.';
    text += std::to_string(octet);
  }
  return text;
}

std::string DottedText(const google::protobuf::RepeatedFieldRef<std::uint32_t>& values) {
  constexpr int kMost = 8;
  std::string text;
  for (int i = 0; i < std::min(values.size(), kMost); ++i) {
    if (i > 0) text += '.';
    text += std::to_string(values.Get(i));
  }
  if (values.size() == 4) return text;
  if (values.size() > kMost) text += "...";
  if (!text.empty()) text += ' ';
  return text + "(" + std::to_string(values.size()) + (values.size() == 1 ? " value)" : " values)");
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
