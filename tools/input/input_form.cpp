#include "tools/input/input_form.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "tools/input/hex_text.h"
#include "tools/input/message_text.h"
#include "tools/input/type_inference.h"
#include "tools/wire/wire_reader.h"

namespace zorl2_inspect {
namespace {

bool IsPrintable(std::string_view content) {
  return std::all_of(content.begin(), content.end(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 || byte == '\n' || byte == '\r' || byte == '\t';
  });
}

// A name, with ':' or a brace after it, is what follows blanks and comments.
bool LooksLikeText(std::string_view content) {
  std::size_t at = 0;
  for (;;) {
    at = content.find_first_not_of(" \t\r\n", at);
    if (at == content.npos) return false;
    if (content[at] != '#') break;
    at = content.find('\n', at);
    if (at == content.npos) return false;
  }
  const std::size_t start = at;
  while (at < content.size() &&
         (std::isalnum(static_cast<unsigned char>(content[at])) != 0 || content[at] == '_')) {
    ++at;
  }
  if (at == start || std::isdigit(static_cast<unsigned char>(content[start])) != 0) return false;
  at = content.find_first_not_of(" \t\r\n", at);
  return at != content.npos && std::strchr(":{<", content[at]) != nullptr;
}

}  // namespace

const char* FormName(InputForm form) {
  switch (form) {
    case InputForm::kHex:
      return "hexadecimal text";
    case InputForm::kJson:
      return "JSON";
    case InputForm::kText:
      return "protobuf text";
    case InputForm::kWire:
    case InputForm::kInferred:
      break;
  }
  return "wire bytes";
}

InputForm RecogniseForm(std::string_view content) {
  content = WithoutMark(content);
  const std::size_t first = content.find_first_not_of(" \t\r\n");
  if (first == content.npos || !IsPrintable(content)) return InputForm::kWire;
  if (LooksLikeJson(content)) return InputForm::kJson;
  Problem ignored;
  // The first line decides; a mistake in a later line is an error and not another form.
  const std::size_t line_end = content.find('\n', first);
  if (DecodeHex(content.substr(0, line_end), &ignored)) return InputForm::kHex;
  if (LooksLikeText(content)) return InputForm::kText;
  return InputForm::kWire;
}

bool LooksLikeRecord(std::string_view beginning) {
  WireReader reader(beginning);
  std::size_t length = 0;
  if (!reader.Length(&length) || length > reader.left()) return false;
  return length == 0 || InferTypeFromWire(reader.Take(length)).flawless;
}

bool LooksDelimited(std::string_view bytes) {
  WireReader reader(bytes);
  int records = 0;
  while (!reader.AtEnd()) {
    std::size_t length = 0;
    if (!reader.Length(&length) || length > reader.left()) return false;
    reader.Take(length);
    ++records;
  }
  return records > 0;
}

}  // namespace zorl2_inspect
