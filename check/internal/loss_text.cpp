#include "check/internal/loss_text.h"

#include <algorithm>
#include <cstdio>

namespace zorl2::check::internal {
namespace {

using google::protobuf::UnknownField;

constexpr std::size_t kLongestText = 64;

std::string HexText(std::uint64_t number, int digits) {
  char text[19];
  std::snprintf(text, sizeof(text), "0x%0*llx", digits, static_cast<unsigned long long>(number));
  return text;
}

std::string QuotedText(const std::string& bytes) {
  std::string text = "\"";
  for (std::size_t i = 0; i < std::min(bytes.size(), kLongestText); ++i) {
    const char c = bytes[i];
    if (c >= ' ' && c <= '~' && c != '"' && c != '\\') {
      text += c;
    } else {
      text += "\\x" + HexText(static_cast<unsigned char>(c), 2).substr(2);
    }
  }
  text += '"';
  if (bytes.size() > kLongestText) text += "... (" + std::to_string(bytes.size()) + " bytes)";
  return text;
}

}  // namespace

std::vector<Loss> SortedByKind(std::vector<Loss> losses) {
  const auto by_kind = [](const Loss& a, const Loss& b) { return a.kind < b.kind; };
  if (!std::is_sorted(losses.begin(), losses.end(), by_kind)) {
    std::stable_sort(losses.begin(), losses.end(), by_kind);
  }
  return losses;
}

std::string DottedText(const zorid_t& id) {
  return IdentifierText({id.octets[0], id.octets[1], id.octets[2], id.octets[3]}, 4);
}

std::string IdentifierText(const std::vector<std::uint32_t>& first_values, int count) {
  std::string text;
  for (const std::uint32_t value : first_values) {
    if (!text.empty()) text += '.';
    text += std::to_string(value);
  }
  if (count == static_cast<int>(sizeof(zorid_t))) return text;
  if (count > static_cast<int>(first_values.size())) text += "...";
  if (!text.empty()) text += ' ';
  return text + "(" + std::to_string(count) + (count == 1 ? " value)" : " values)");
}

std::string UnknownText(const UnknownField& field) {
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return std::to_string(field.varint());
    case UnknownField::TYPE_FIXED32:
      return HexText(field.fixed32(), 8);
    case UnknownField::TYPE_FIXED64:
      return HexText(field.fixed64(), 16);
    case UnknownField::TYPE_LENGTH_DELIMITED:
      return QuotedText(field.length_delimited());
    default:
      return "group of " + std::to_string(field.group().field_count()) + " fields";
  }
}

}  // namespace zorl2::check::internal
