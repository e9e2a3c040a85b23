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
  // Its column is never left out.
  bool important = false;
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

  // What to do on a terminal that has no room for all columns: print the last column below its row,
  // and leave out these columns, in this order, until the others fit.
  void FitTerminals(std::vector<std::string> dispensable = {}) {
    fits_terminals_ = true;
    dispensable_ = std::move(dispensable);
  }

  void Add(std::vector<Cell> row) { rows_.push_back(std::move(row)); }
  bool empty() const { return rows_.empty(); }
  std::size_t size() const { return rows_.size(); }
  void Clear() { rows_.clear(); }

  // Prints the heading and the rows.
  void Print(Output& out, const Palette& palette);

  // Prints the rows as a part of a longer table, and removes them. Prints the heading at the
  // beginning, after many rows, and when a column appears or becomes wider.
  void PrintNext(Output& out, const Palette& palette);

  // The names of the columns that a terminal had no room for; empty if it had.
  std::string LeftOut() const;

 private:
  // How the rows are laid out. A width of 0 leaves the column out.
  using Widths = std::vector<std::size_t>;
  struct Layout {
    Widths widths;
    bool last_below = false;
    std::vector<std::size_t> left_out;

    bool operator!=(const Layout& other) const {
      return widths != other.widths || last_below != other.last_below;
    }
  };

  bool IsNumber(std::size_t column) const { return columns_[column].substr(0, 1) == ">"; }
  std::string Name(std::size_t column) const {
    return columns_[column].substr(IsNumber(column) ? 1 : 0);
  }
  // Makes the natural widths as wide as the rows need them.
  void Widen();
  // The layout of the natural widths for an output of this width, or of any if it is 0.
  Layout FitInto(std::size_t width) const;
  void PrintHeading(Output& out, const Palette& palette) const;
  void PrintRows(Output& out, const Palette& palette) const;
  void PrintBelow(const Cell& cell, Output& out, const Palette& palette) const;

  std::vector<std::string> columns_;
  std::size_t always_;
  bool fits_terminals_ = false;
  std::vector<std::string> dispensable_;
  std::vector<std::vector<Cell>> rows_;
  // For the parts that have been printed.
  Widths natural_;
  std::vector<bool> important_;
  Layout layout_;
  std::size_t rows_below_heading_ = 0;
};

}  // namespace zorl2_inspect
