#include "tools/text/quoting.h"

#include <fmt/format.h>
#include <google/protobuf/stubs/common.h>

#include <algorithm>
#include <iterator>

namespace zorl2_inspect {
namespace {

// How many bytes a character takes according to its first one.
std::size_t SequenceLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  if (byte < 0xc2) return 1;
  if (byte < 0xe0) return 2;
  return byte < 0xf0 ? 3 : 4;
}

bool IsPrintableSequence(std::string_view text) {
  if (!IsUtf8(text)) return false;
  // The second set of control characters, U+0080 to U+009F, and the marks that change the
  // direction of the text around them.
  if (text[0] == '\xc2') return static_cast<unsigned char>(text[1]) >= 0xa0;
  return text.substr(0, 2) != "\xe2\x80" && text.substr(0, 2) != "\xe2\x81";
}

}  // namespace

std::string Quoted(std::string_view text, std::size_t limit) {
  std::string out = "\"";
  std::size_t i = 0;
  while (i < text.size() && i < limit) {
    const char c = text[i];
    const auto byte = static_cast<unsigned char>(c);
    const std::size_t length = std::min(SequenceLength(c), text.size() - i);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (byte >= 0x20 && byte < 0x7f) {
      out += c;
    } else if (byte >= 0x80 && length > 1 && IsPrintableSequence(text.substr(i, length))) {
      out += text.substr(i, length);
      i += length - 1;
    } else {
      fmt::format_to(std::back_inserter(out), "\\x{:02x}", byte);
    }
    ++i;
  }
  out += '"';
  if (i < text.size()) fmt::format_to(std::back_inserter(out), "... ({} bytes)", text.size());
  return out;
}

std::string QuotedUnlessPlain(std::string_view text, std::size_t limit) {
  std::string quoted = Quoted(text, limit);
  const bool plain = quoted.size() == text.size() + 2 && text.find(' ') == text.npos;
  return plain ? std::string(text) : quoted;
}

bool IsUtf8(std::string_view text) {
  return google::protobuf::internal::IsStructurallyValidUTF8(text.data(),
                                                             static_cast<int>(text.size()));
}

std::string Hex(std::string_view bytes) {
  std::string out;
  for (const char c : bytes) {
    fmt::format_to(std::back_inserter(out), out.empty() ? "{:02x}" : " {:02x}",
                   static_cast<unsigned char>(c));
  }
  return out;
}

}  // namespace zorl2_inspect
