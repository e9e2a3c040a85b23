#include "tools/input/hex_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <utility>
#include <vector>

#include "tools/text/quoting.h"

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
  // Two or more blanks follow the token, as between the columns of a dump.
  bool gap_follows = false;
  bool colon_follows = false;
};

// The hexadecimal words at the beginning of the line; something else begins at *end.
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
    token.gap_follows = line.substr(stop, 2) == "  " || line.substr(stop, 2) == " \t";
    token.colon_follows = line.substr(stop, 1) == ":";
    tokens.push_back(token);
    at = stop;
  }
  *end = at;
  return tokens;
}

constexpr const char* kPayload =
    "one payload, from tshark -T fields -e udp.payload (or tcp.payload, or data)";

// Whether the digits are this number in base 8.
bool IsOctal(std::string_view digits, std::size_t number) {
  std::uint64_t value = 0;
  for (const char digit : digits) {
    if (Digit(digit) > 7) return false;
    value = value << 3 | Digit(digit);
  }
  return value == number;
}

class Decoder {
 public:
  explicit Decoder(Problem* problem) : problem_(problem) {}

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
    if (repeat_) return Fail(0, "the end of the text", "an offset that ends the repetition");
    if (!any_) return Fail(0, "the end of the text", "hexadecimal digits");
    return true;
  }

  std::string bytes;

 private:
  bool Fail(std::size_t column, std::string found, std::string expected) {
    problem_->place = TextPlace{line_, column + 1};
    problem_->found = std::move(found);
    problem_->expected = std::move(expected);
    return false;
  }

  bool Line(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == line.npos || line[first] == '#') return true;
    if (offsets_ && line.substr(first) == "*") {
      if (bytes.size() < last_line_ || last_line_ == 0) {
        return Fail(first, "\"*\"", "a line to repeat before it");
      }
      repeat_ = true;
      return true;
    }
    std::size_t end = 0;
    std::vector<Token> tokens = Tokens(line, &end);
    if (tokens.empty()) {
      return Fail(end, Quoted(line.substr(end, 1)), "hexadecimal digits");
    }
    if (offsets_) return DumpLine(line, tokens);
    if (end < line.size()) {
      return Fail(end, Quoted(line.substr(end, 1)), "hexadecimal digits");
    }
    for (const Token& token : tokens) {
      if (!Append(token)) return false;
    }
    return true;
  }

  bool DumpLine(std::string_view line, const std::vector<Token>& tokens) {
    const Token& offset = tokens.front();
    if (offset.digits.size() < 4 || offset.digits.size() > 16) {
      return Fail(offset.column, std::string(offset.digits), "an offset of 4 to 16 digits");
    }
    std::uint64_t value = 0;
    for (const char digit : offset.digits) value = value << 4 | Digit(digit);
    if (repeat_) {
      if (value > kLongest)
        return Fail(offset.column, fmt::format("a repetition up to {:#x}", value),
                    "at most 512 MiB");
      const std::string row = bytes.substr(bytes.size() - last_line_);
      while (bytes.size() < value) bytes += row;
      repeat_ = false;
    }
    if (any_ && value == 0) {
      return Fail(offset.column, fmt::format("the offset {} of another dump", offset.digits),
                  kPayload);
    }
    if (any_ && value != bytes.size()) {
      if (IsOctal(offset.digits, bytes.size())) {
        return Fail(offset.column, fmt::format("the octal offset {}", offset.digits),
                    "hexadecimal offsets, from od -Ax -tx1");
      }
      return Fail(offset.column, fmt::format("the offset {}", offset.digits),
                  fmt::format("{:x}", bytes.size()));
    }
    if (!any_ && value != 0) {
      return Fail(offset.column, fmt::format("the offset {}", offset.digits), "0");
    }
    any_ = true;
    const std::size_t before = bytes.size();
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      // No dump prints more than 16 bytes in a line; the column of characters, which may look like
      // digits, follows them.
      if (tokens[i].digits.size() % 2 != 0 || bytes.size() - before >= 16) break;
      if (line.substr(tokens[i].column, 1) == "|") break;
      if (!Append(tokens[i])) return false;
      // Two blanks after eight bytes separate the halves of a line; anywhere else they end it.
      if (tokens[i].gap_follows && bytes.size() - before != 8) break;
    }
    if (bytes.size() > before) last_line_ = bytes.size() - before;
    return true;
  }

  bool Append(const Token& token) {
    if (token.digits.size() % 2 != 0) {
      return Fail(token.column, fmt::format("{} digits", token.digits.size()), "digits in pairs");
    }
    for (std::size_t i = 0; i < token.digits.size(); i += 2) {
      bytes += static_cast<char>(Digit(token.digits[i]) << 4 | Digit(token.digits[i + 1]));
    }
    any_ = true;
    return true;
  }

  Problem* problem_;
  bool offsets_ = false;
  std::size_t line_ = 0;
  bool any_ = false;
  bool repeat_ = false;
  std::size_t last_line_ = 0;
};

bool OnlyBytesFollow(const std::vector<Token>& tokens) {
  return tokens.size() > 1 && std::all_of(tokens.begin() + 1, tokens.end(), [](const Token& token) {
           return token.digits.size() == 2;
         });
}

// A dump begins every line with an offset. The first offset is zero and longer than a byte; a gap,
// a colon or nothing but single bytes follow it.
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
             (offset.gap_follows || offset.colon_follows || OnlyBytesFollow(tokens));
    }
    text.remove_prefix(length == text.npos ? text.size() : length + 1);
  }
  return false;
}

}  // namespace

std::string_view WithoutMark(std::string_view text) {
  if (text.substr(0, 3) == "\xef\xbb\xbf") text.remove_prefix(3);
  return text;
}

std::optional<std::string> DecodeHex(std::string_view text, Problem* problem) {
  text = WithoutMark(text);
  Decoder decoder(problem);
  if (!decoder.Decode(text, LooksLikeDump(text))) return std::nullopt;
  return std::move(decoder.bytes);
}

}  // namespace zorl2_inspect
