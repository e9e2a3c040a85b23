// Prints bytes beside what they mean.
#pragma once

#include <google/protobuf/descriptor.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "tools/colours.h"
#include "tools/explain_notes.h"

namespace zorl2_inspect {

struct ExplainOptions {
  bool colours = false;
  // How many bytes of one field are printed.
  std::size_t bytes = 32;
};

struct ExplainSummary {
  std::size_t fields = 0;
  std::array<std::size_t, static_cast<std::size_t>(Note::Kind::kCount)> notes = {};
  std::size_t errors = 0;
  std::size_t missing = 0;
  // What the runtime would refuse first; empty when it refuses nothing.
  std::string problem;
};

// Prints one line for each field of a message, down to the leaf, in the order of the bytes: offset,
// bytes, path, type, value, and what becomes of the field where that is not the obvious. Goes on
// behind damage where it can. Memory does not grow with the number of fields, except for one number
// for each interface of a state signal. Throws std::system_error when it cannot write.
ExplainSummary Explain(std::string_view bytes, const google::protobuf::Descriptor& type,
                       std::size_t first_offset, const ExplainOptions& options, std::FILE* out);

}  // namespace zorl2_inspect
