#include "tools/text/table.h"

#include <algorithm>

namespace zorl2_inspect {
namespace {

constexpr std::size_t kGap = 2;

// A long table repeats its heading after so many rows.
constexpr std::size_t kRowsBelowHeading = 1000;

void Put(std::string& line, bool right, std::size_t column_width, const std::string& text,
         const std::string& shown) {
  const std::size_t width = Width(text);
  const std::string padding(column_width > width ? column_width - width : 0, ' ');
  if (right) line += padding;
  line += shown;
  if (!right) line += padding;
  line.append(kGap, ' ');
}

void PrintLine(std::string& line, Output& out) {
  while (!line.empty() && line.back() == ' ') line.pop_back();
  line += '\n';
  out.Write(line);
}

}  // namespace

std::size_t Width(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
    return (static_cast<unsigned char>(character) & 0xc0) != 0x80;
  }));
}

std::string Cut(const std::string& text, std::size_t width) {
  if (Width(text) <= width) return text;
  std::string cut;
  for (const char c : text) {
    const bool begins = (static_cast<unsigned char>(c) & 0xc0) != 0x80;
    if (begins && Width(cut) + 3 == width) break;
    cut += c;
  }
  return cut + "...";
}

void Table::Widen(Widths& widths) const {
  widths.resize(columns_.size());
  for (std::size_t i = 0; i < std::min(always_, columns_.size()); ++i) {
    widths[i] = std::max(widths[i], columns_[i].size() - (IsNumber(i) ? 1 : 0));
  }
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::string& text = row[i].text;
      if (widths[i] == 0 && (text == "-" || text.empty())) continue;
      const std::size_t name = columns_[i].size() - (IsNumber(i) ? 1 : 0);
      widths[i] = std::max({widths[i], name, Width(text)});
    }
  }
}

void Table::PrintHeading(const Widths& widths, Output& out, const Palette& palette) const {
  std::string line;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (widths[i] == 0) continue;
    const std::string name = columns_[i].substr(IsNumber(i) ? 1 : 0);
    Put(line, IsNumber(i), widths[i], name, palette(Colour::kBold, name));
  }
  PrintLine(line, out);
}

void Table::PrintRows(const Widths& widths, Output& out, const Palette& palette) const {
  std::string line;
  for (const auto& row : rows_) {
    line.clear();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (widths[i] == 0) continue;
      Put(line, IsNumber(i), widths[i], row[i].text, palette(row[i].colour, row[i].text));
    }
    PrintLine(line, out);
  }
}

void Table::Print(Output& out, const Palette& palette) const {
  Widths widths;
  Widen(widths);
  PrintHeading(widths, out, palette);
  PrintRows(widths, out, palette);
}

void Table::PrintNext(Output& out, const Palette& palette) {
  if (rows_.empty()) return;
  const Widths before = widths_;
  Widen(widths_);
  if (widths_ != before || rows_below_heading_ >= kRowsBelowHeading) {
    PrintHeading(widths_, out, palette);
    rows_below_heading_ = 0;
  }
  PrintRows(widths_, out, palette);
  rows_below_heading_ += rows_.size();
  rows_.clear();
}

}  // namespace zorl2_inspect
