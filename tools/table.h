// Columns that line up.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "tools/colours.h"

namespace zorl2_inspect {

struct Cell {
  Cell(std::string content, Colour with = Colour::kPlain)  // NOLINT(google-explicit-constructor)
      : text(std::move(content)), colour(with) {}
  Cell(const char* content) : text(content) {}  // NOLINT(google-explicit-constructor)

  std::string text;
  Colour colour = Colour::kPlain;
};

// What a terminal shows of the text: one place for each character.
std::size_t Width(std::string_view text);

class Table {
 public:
  // A name that begins with '>' is a column of numbers, aligned to the right.
  explicit Table(std::vector<std::string> columns) : columns_(std::move(columns)) {}

  void Add(std::vector<Cell> row) { rows_.push_back(std::move(row)); }
  bool empty() const { return rows_.empty(); }
  std::size_t size() const { return rows_.size(); }
  void Clear() { rows_.clear(); }

  // Prints the heading and the rows. Columns in which every cell is "-" or empty are left out.
  void Print(std::FILE* out, const Palette& palette) const;

 private:
  std::vector<std::string> columns_;
  std::vector<std::vector<Cell>> rows_;
};

}  // namespace zorl2_inspect
