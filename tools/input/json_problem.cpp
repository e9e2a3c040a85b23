#include "tools/input/json_problem.h"

#include <algorithm>

#include "tools/text/quoting.h"

namespace zorl2_inspect {

std::string TokenAt(std::string_view text, std::size_t offset) {
  constexpr std::size_t kShown = 24;
  if (offset >= text.size()) return "the end of the text";
  if (text[offset] == '"') {
    std::size_t end = offset + 1;
    while (end < text.size() && text[end] != '"') end += text[end] == '\\' ? 2 : 1;
    return Quoted(text.substr(offset + 1, end - offset - 1), kShown);
  }
  const std::size_t end = std::min(text.find_first_of(" \t\r\n,:[]{}\"", offset), text.size());
  return Quoted(text.substr(offset, std::max<std::size_t>(end - offset, 1)), kShown);
}

JsonProblem SyntaxProblem(std::string_view text, std::size_t offset,
                          rapidjson::ParseErrorCode code) {
  JsonProblem problem{offset, "", TokenAt(text, offset), ""};
  switch (code) {
    case rapidjson::kParseErrorDocumentEmpty:
      problem.expected = "a message";
      break;
    case rapidjson::kParseErrorObjectMissName:
      problem.expected = "a field name in quotes";
      break;
    case rapidjson::kParseErrorObjectMissColon:
      problem.expected = "':'";
      break;
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
      problem.expected = "',' or '}'";
      break;
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
      problem.expected = "',' or ']'";
      break;
    case rapidjson::kParseErrorStringMissQuotationMark:
      problem.found = "the end of the text";
      problem.expected = "a closing quote";
      break;
    case rapidjson::kParseErrorStringInvalidEncoding:
      problem.found = "a byte or a control character that a string cannot have";
      problem.expected = "UTF-8, an escape such as \\n, or {\"hex\": \"67 ff\"} for other bytes";
      break;
    case rapidjson::kParseErrorStringEscapeInvalid:
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
      problem.expected = "an escape such as \\n or \\u00e4";
      break;
    default:
      problem.expected = "a value";
  }
  return problem;
}

}  // namespace zorl2_inspect
