// What differs between two texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// A line that only one of the texts has. Lines are counted from 1.
struct LineChange {
  bool added;
  std::size_t line;
  std::string_view text;
};

// The lines to remove from the first text and to add from the second, in their order.
std::vector<LineChange> CompareLines(std::string_view before, std::string_view after);

// The parts of two different texts around the first difference, in quotes, with dots where text is
// omitted. The two parts differ.
struct Excerpts {
  std::string before;
  std::string after;
};
Excerpts Differing(std::string_view before, std::string_view after);

}  // namespace zorl2_inspect
