#include "tools/text/quoting.h"

#include <fmt/format.h>
#include <google/protobuf/stubs/common.h>

#include <algorithm>
#include <iterator>

#include "tools/text/unsafe_characters.h"

namespace zorl2_inspect {
namespace {

void AppendEscaped(char c, std::string& out) {
  fmt::format_to(std::back_inserter(out), "\\x{:02x}", static_cast<unsigned char>(c));
}

}  // namespace

std::string Quoted(std::string_view text, std::size_t limit) {
  std::string out = "\"";
  std::size_t i = 0;
  while (i < text.size() && i < limit) {
    const char c = text[i];
    const std::size_t length = SafeCharacter(text.substr(i));
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (length > 0) {
      out += text.substr(i, length);
      i += length - 1;
    } else {
      AppendEscaped(c, out);
    }
    ++i;
  }
  out += '"';
  if (i < text.size()) fmt::format_to(std::back_inserter(out), "... ({} bytes)", text.size());
  return out;
}

std::string Printable(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = SafeCharacter(text.substr(i));
    if (length == 0) {
      AppendEscaped(text[i++], out);
      continue;
    }
    out += text.substr(i, length);
    i += length;
  }
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
