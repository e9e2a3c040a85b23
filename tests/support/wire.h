// Bytes on the wire, written as hexadecimal digits.
#pragma once

#include <google/protobuf/message_lite.h>

#include <cctype>
#include <sstream>
#include <stdexcept>
#include <string>

namespace zorl2_test {

// Returns three bytes for "0A 04 01". Ignores white space, and comments from a # to the end of the
// line. Throws for anything else, which is a mistake in the test.
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
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// Returns the bytes as "0A 04 01", so that failing tests are legible.
inline std::string ToHex(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

// Returns the message's bytes as such a text, even if a required field is missing.
inline std::string WireOf(const google::protobuf::MessageLite& message) {
  return ToHex(message.SerializePartialAsString());
}

// Parses bytes without requiring the required fields. Throws for malformed bytes, which are a
// mistake in the test.
template <typename Proto>
Proto FromWire(const std::string& hex) {
  Proto message;
  if (!message.ParsePartialFromString(FromHex(hex))) throw std::invalid_argument(hex);
  return message;
}

}  // namespace zorl2_test
