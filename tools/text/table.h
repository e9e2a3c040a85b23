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

// The text if it fits into so many places of a terminal, otherwise its beginning and three dots.
std::string Cut(const std::string& text, std::size_t width);

class Table {
 public:
  // A name that begins with '>' is a column of numbers, aligned to the right.
  // Columns in which every cell is "-" or empty are left out, except the first `always` ones.
  explicit Table(std::vector<std::string> columns, std::size_t always = 0)
      : columns_(std::move(columns)), always_(always) {}

  void Add(std::vector<Cell> row) { rows_.push_back(std::move(row)); }
  bool empty() const { return rows_.empty(); }
  std::size_t size() const { return rows_.size(); }
  void Clear() { rows_.clear(); }

  // Prints the heading and the rows.
  void Print(Output& out, const Palette& palette) const;

  // Prints the rows as a part of a longer table, and removes them. Prints the heading at the
  // beginning, after many rows, and when a column appears or becomes wider.
  void PrintNext(Output& out, const Palette& palette);

 private:
  // How the rows are laid out. A width of 0 leaves the column out.
  using Widths = std::vector<std::size_t>;

  bool IsNumber(std::size_t column) const { return columns_[column].substr(0, 1) == ">"; }
  // Makes columns as wide as the rows need them.
  void Widen(Widths& widths) const;
  void PrintHeading(const Widths& widths, Output& out, const Palette& palette) const;
  void PrintRows(const Widths& widths, Output& out, const Palette& palette) const;

  std::vector<std::string> columns_;
  std::size_t always_;
  std::vector<std::vector<Cell>> rows_;
  // For the parts that have been printed.
  Widths widths_;
  std::size_t rows_below_heading_ = 0;
};

}  // namespace zorl2_inspect
