// Aligned columns.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/text/colours.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

struct Cell {
  Cell(std::string content, Colour with = Colour::kPlain)  // NOLINT(google-explicit-constructor)
      : text(std::move(content)), colour(with) {}
  Cell(const char* content) : text(content) {}  // NOLINT(google-explicit-constructor)

  std::string text;
  Colour colour = Colour::kPlain;
};

// How many places a terminal needs for the text: one for each character.
std::size_t Width(std::string_view text);

// The text if a terminal shows it in so many places, else its beginning and three dots.
std::string Cut(const std::string& text, std::size_t width);

class Table {
 public:
  // A name that begins with '>' is a column of numbers, aligned to the right.
  // Empty columns are those in which every cell is "-" or empty.
  enum class Empty { kLeftOut, kPrinted };
  explicit Table(std::vector<std::string> columns, Empty empty = Empty::kLeftOut)
      : columns_(std::move(columns)), empty_(empty) {}

  void Add(std::vector<Cell> row) { rows_.push_back(std::move(row)); }
  bool empty() const { return rows_.empty(); }
  std::size_t size() const { return rows_.size(); }
  void Clear() { rows_.clear(); }

  // Prints the heading and the rows.
  void Print(Output& out, const Palette& palette) const;

 private:
  std::vector<std::string> columns_;
  Empty empty_;
  std::vector<std::vector<Cell>> rows_;
};

}  // namespace zorl2_inspect
