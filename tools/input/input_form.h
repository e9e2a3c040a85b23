// The forms of an input.
#pragma once

#include <string_view>

namespace zorl2_inspect {

enum class InputForm {
  kInferred,
  kWire,
  kHex,  // hexadecimal text, see hex_text.h
  kJson,
  kText,  // the protobuf text format
};

// Such as "hexadecimal text".
const char* FormName(InputForm form);

// The form of the content, by its beginning; wire bytes if it is no other.
InputForm RecogniseForm(std::string_view content);

// Whether a message that could be one of the schema follows its length at the beginning.
bool LooksLikeRecord(std::string_view beginning);

// Whether the bytes are length-prefixed records, to the last byte.
bool LooksDelimited(std::string_view bytes);

}  // namespace zorl2_inspect
