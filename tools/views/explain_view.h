// Bytes next to their meaning.
#pragma once

#include <google/protobuf/descriptor.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "tools/model/notes.h"
#include "tools/text/error.h"
#include "tools/views/explain_rows.h"

namespace zorl2_inspect {

struct ExplainSummary {
  std::size_t fields = 0;
  std::array<std::size_t, static_cast<std::size_t>(Note::Kind::kCount)> notes = {};
  // Why the runtime cannot parse the message; the first reason.
  std::optional<Problem> damage;
  // What the conversion does with a message without damage.
  zorl2::check::Verdict verdict;
};

// Prints one row for each field of a message, down to the leaf, in the order of the bytes: offset,
// bytes, path, type, value, and what the parser and the conversion make of it. Continues after
// damage if it can.
ExplainSummary Explain(std::string_view bytes, const google::protobuf::Descriptor& type,
                       std::size_t first_offset, ExplainRows& rows);

}  // namespace zorl2_inspect
