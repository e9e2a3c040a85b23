// Bytes on the wire, written as hexadecimal digits.
#pragma once

#include <google/protobuf/message_lite.h>

#include <cctype>
#include <sstream>
#include <stdexcept>
#include <string>

namespace zorl2_test {

// "0A 04 01" as three octets. White space separates, and from a # to the end of its line is
// comment. Anything else is a mistake in the test and throws.
inline std::string FromHex(const std::string& text) {
  std::string digits;
  bool comment = false;
  for (const char c : text) {
    if (c == '#') comment = true;
    if (c == '\n') comment = false;
    if (comment || std::isspace(static_cast<unsigned char>(c)) != 0) continue;
    if (std::isxdigit(static_cast<unsigned char>(c)) == 0) throw std::invalid_argument(text);
    digits += c;
  }
  if (digits.size() % 2 != 0) throw std::invalid_argument(text);
  std::string octets;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    octets += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  return octets;
}

// The octets as "0A 04 01", which failing tests print legibly.
inline std::string ToHex(const std::string& octets) {
  std::string text;
  for (const char c : octets) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const auto octet = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += kDigits[octet >> 4];
    text += kDigits[octet & 15];
  }
  return text;
}

// The message's bytes as text, also when a required field is missing.
inline std::string WireOf(const google::protobuf::MessageLite& message) {
  return ToHex(message.SerializePartialAsString());
}

// Parses without asking for the required fields. Malformed bytes are a mistake in the test.
template <typename Proto>
Proto FromWire(const std::string& hex) {
  Proto message;
  if (!message.ParsePartialFromString(FromHex(hex))) throw std::invalid_argument(hex);
  return message;
}

}  // namespace zorl2_test
