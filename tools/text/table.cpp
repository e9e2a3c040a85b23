#include "tools/text/table.h"

#include <algorithm>

#include "tools/text/wrap.h"

namespace zorl2_inspect {
namespace {

constexpr std::size_t kGap = 2;
// Of what is below a row.
constexpr std::size_t kIndent = 4;

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

void Table::Widen() {
  natural_.resize(columns_.size());
  important_.resize(columns_.size());
  for (std::size_t i = 0; i < std::min(always_, columns_.size()); ++i) {
    natural_[i] = std::max(natural_[i], Name(i).size());
  }
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const std::string& text = row[i].text;
      important_[i] = important_[i] || row[i].important;
      if (natural_[i] == 0 && (text == "-" || text.empty())) continue;
      const std::size_t name = columns_[i].size() - (IsNumber(i) ? 1 : 0);
      natural_[i] = std::max({natural_[i], name, Width(text)});
    }
  }
}

Table::Layout Table::FitInto(std::size_t width) const {
  Layout layout{natural_, false, {}};
  Widths& widths = layout.widths;
  const auto fits = [&] {
    std::size_t total = 0;
    for (const std::size_t column : widths) total += column == 0 ? 0 : column + kGap;
    return total <= width + kGap;
  };
  if (width == 0 || !fits_terminals_ || fits()) return layout;
  layout.last_below = widths.back() > 0;
  widths.back() = 0;
  for (const std::string& name : dispensable_) {
    if (fits()) break;
    for (std::size_t i = 0; i + 1 < columns_.size(); ++i) {
      if (Name(i) != name || widths[i] == 0 || important_[i]) continue;
      widths[i] = 0;
      layout.left_out.push_back(i);
    }
  }
  return layout;
}

std::string Table::LeftOut() const {
  std::string names;
  for (const std::size_t column : layout_.left_out) {
    names += (names.empty() ? "" : ", ") + Name(column);
  }
  return names;
}

void Table::PrintHeading(Output& out, const Palette& palette) const {
  std::string line;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (layout_.widths[i] == 0) continue;
    Put(line, IsNumber(i), layout_.widths[i], Name(i), palette(Colour::kBold, Name(i)));
  }
  PrintLine(line, out);
}

void Table::PrintRows(Output& out, const Palette& palette) const {
  const Widths& widths = layout_.widths;
  std::string line;
  for (const auto& row : rows_) {
    line.clear();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (widths[i] == 0) continue;
      Put(line, IsNumber(i), widths[i], row[i].text, palette(row[i].colour, row[i].text));
    }
    PrintLine(line, out);
    if (layout_.last_below) PrintBelow(row.back(), out, palette);
  }
}

void Table::PrintBelow(const Cell& cell, Output& out, const Palette& palette) const {
  if (cell.text.empty()) return;
  const std::size_t room = std::max(out.width(), 2 * kIndent) - kIndent;
  for (const std::string& line : Wrap(cell.text, room, room)) {
    out.Print("{:{}}{}\n", "", kIndent, palette(cell.colour, line));
  }
}

void Table::Print(Output& out, const Palette& palette) {
  Widen();
  layout_ = FitInto(out.width());
  PrintHeading(out, palette);
  PrintRows(out, palette);
}

void Table::PrintNext(Output& out, const Palette& palette) {
  if (rows_.empty()) return;
  Widen();
  Layout layout = FitInto(out.width());
  const bool changed = layout != layout_;
  layout_ = std::move(layout);
  if (changed || rows_below_heading_ >= kRowsBelowHeading) {
    PrintHeading(out, palette);
    rows_below_heading_ = 0;
  }
  PrintRows(out, palette);
  rows_below_heading_ += rows_.size();
  rows_.clear();
}

}  // namespace zorl2_inspect
