// Lines and columns of a text.
#pragma once

#include <cstddef>
#include <string_view>

namespace zorl2_inspect {

// Counted from 1; columns count characters, not bytes.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

// The place of a byte of the text.
TextPlace PlaceAt(std::string_view text, std::size_t offset);

}  // namespace zorl2_inspect
