#include "tools/hex_text.h"

#include <fmt/format.h>

#include <cctype>
#include <cstdint>
#include <vector>

namespace zorl2_inspect {
namespace {

// A hexadecimal dump may claim a repetition of any length.
constexpr std::uint64_t kLongest = std::uint64_t{512} << 20;

bool IsHexDigit(char character) {
  return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

bool IsBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == ',' ||
         character == ':';
}

unsigned Digit(char character) {
  if (character <= '9') return static_cast<unsigned>(character - '0');
  return static_cast<unsigned>((character | 0x20) - 'a') + 10;
}

struct Token {
  std::string_view digits;
  std::size_t column = 0;
  // Behind the token stand two blanks or more: where a dump's columns part.
  bool gap_behind = false;
  bool colon_behind = false;
};

// The hexadecimal words at the beginning of the line; *end is where something else stands.
std::vector<Token> Tokens(std::string_view line, std::size_t* end) {
  std::vector<Token> tokens;
  std::size_t at = 0;
  for (;;) {
    while (at < line.size() && IsBlank(line[at])) ++at;
    std::size_t start = at;
    if (line.substr(at, 2) == "0x" || line.substr(at, 2) == "0X") start = at + 2;
    std::size_t stop = start;
    while (stop < line.size() && IsHexDigit(line[stop])) ++stop;
    const bool whole = stop == line.size() || IsBlank(line[stop]);
    if (stop == start || !whole) break;
    Token token{line.substr(start, stop - start), at, false, false};
    token.gap_behind = line.substr(stop, 2) == "  " || line.substr(stop, 2) == " \t";
    token.colon_behind = line.substr(stop, 1) == ":";
    tokens.push_back(token);
    at = stop;
  }
  *end = at;
  return tokens;
}

class Decoder {
 public:
  explicit Decoder(HexError* error) : error_(error) {}

  bool Decode(std::string_view text, bool offsets) {
    offsets_ = offsets;
    while (!text.empty()) {
      const std::size_t length = text.find('\n');
      std::string_view line = text.substr(0, length);
      text.remove_prefix(length == text.npos ? text.size() : length + 1);
      ++line_;
      if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
      if (!Line(line)) return false;
    }
    if (repeat_) return Fail(0, "expected an offset that ends the repetition, found the end");
    if (!any_) return Fail(0, "expected hexadecimal digits, found none");
    return true;
  }

  std::string bytes;

 private:
  bool Fail(std::size_t column, std::string problem) {
    *error_ = {line_, static_cast<int>(column) + 1, std::move(problem)};
    return false;
  }

  bool Line(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == line.npos || line[first] == '#') return true;
    if (offsets_ && line.substr(first) == "*") {
      if (bytes.size() < last_line_ || last_line_ == 0) {
        return Fail(first, "expected a line to repeat before \"*\", found none");
      }
      repeat_ = true;
      return true;
    }
    std::size_t end = 0;
    std::vector<Token> tokens = Tokens(line, &end);
    if (tokens.empty()) {
      return Fail(end, fmt::format("expected hexadecimal digits, found '{}'", line.substr(end, 1)));
    }
    if (offsets_) return DumpLine(line, tokens);
    if (end < line.size()) {
      return Fail(end, fmt::format("expected hexadecimal digits, found '{}'", line.substr(end, 1)));
    }
    for (const Token& token : tokens) {
      if (!Append(token)) return false;
    }
    return true;
  }

  bool DumpLine(std::string_view line, const std::vector<Token>& tokens) {
    const Token& offset = tokens.front();
    if (offset.digits.size() < 4 || offset.digits.size() > 16) {
      return Fail(offset.column, "expected an offset of 4 to 16 digits");
    }
    std::uint64_t value = 0;
    for (const char digit : offset.digits) value = value << 4 | Digit(digit);
    if (repeat_) {
      if (value > kLongest) return Fail(offset.column, "the repetition is longer than 512 MiB");
      const std::string row = bytes.substr(bytes.size() - last_line_);
      while (bytes.size() < value) bytes += row;
      repeat_ = false;
    }
    if (any_ && value != bytes.size()) {
      return Fail(offset.column,
                  fmt::format("expected the offset {:x}, found {}", bytes.size(), offset.digits));
    }
    if (!any_ && value != 0) {
      return Fail(offset.column, fmt::format("expected the offset 0, found {}", offset.digits));
    }
    any_ = true;
    const std::size_t before = bytes.size();
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      // No dump prints more than 16 bytes in a line; behind them stands the column of characters,
      // which may look like digits.
      if (tokens[i].digits.size() % 2 != 0 || bytes.size() - before >= 16) break;
      if (line.substr(tokens[i].column, 1) == "|") break;
      if (!Append(tokens[i])) return false;
      // Two blanks behind eight bytes part the halves of a line; anywhere else they end it.
      if (tokens[i].gap_behind && bytes.size() - before != 8) break;
    }
    if (bytes.size() > before) last_line_ = bytes.size() - before;
    return true;
  }

  bool Append(const Token& token) {
    if (token.digits.size() % 2 != 0) {
      return Fail(token.column,
                  fmt::format("expected digits in pairs, found {} of them", token.digits.size()));
    }
    for (std::size_t i = 0; i < token.digits.size(); i += 2) {
      bytes += static_cast<char>(Digit(token.digits[i]) << 4 | Digit(token.digits[i + 1]));
    }
    any_ = true;
    return true;
  }

  HexError* error_;
  bool offsets_ = false;
  int line_ = 0;
  bool any_ = false;
  bool repeat_ = false;
  std::size_t last_line_ = 0;
};

// A dump begins every line with an offset, and the first offset is nothing but zeros, longer than a
// byte, with a gap or a colon behind it.
bool LooksLikeDump(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = text.find('\n');
    const std::string_view line = text.substr(0, length);
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first != line.npos && line[first] != '#') {
      std::size_t end = 0;
      const std::vector<Token> tokens = Tokens(line, &end);
      if (tokens.empty()) return false;
      const Token& offset = tokens.front();
      return offset.digits.size() >= 4 &&
             offset.digits.find_first_not_of('0') == offset.digits.npos &&
             (offset.gap_behind || offset.colon_behind);
    }
    text.remove_prefix(length == text.npos ? text.size() : length + 1);
  }
  return false;
}

}  // namespace

std::optional<std::string> DecodeHex(std::string_view text, HexError* error) {
  Decoder decoder(error);
  if (!decoder.Decode(text, LooksLikeDump(text))) return std::nullopt;
  return std::move(decoder.bytes);
}

}  // namespace zorl2_inspect
