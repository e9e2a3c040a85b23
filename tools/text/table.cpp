#include "tools/text/table.h"

#include <algorithm>

namespace zorl2_inspect {
namespace {

constexpr std::size_t kGap = 2;

struct Column {
  std::size_t index;
  std::string name;
  bool right;
  std::size_t width;
};

void Put(std::string& line, const Column& column, bool last, const std::string& text,
         const std::string& shown) {
  const std::size_t width = Width(text);
  const std::string padding(column.width > width ? column.width - width : 0, ' ');
  if (column.right) line += padding;
  line += shown;
  if (last) return;
  if (!column.right) line += padding;
  line.append(kGap, ' ');
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

void Table::Print(Output& out, const Palette& palette) const {
  std::vector<Column> columns;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const bool right = columns_[i].substr(0, 1) == ">";
    const std::string name = columns_[i].substr(right ? 1 : 0);
    Column column{i, name, right, Width(name)};
    bool used = empty_ == Empty::kPrinted;
    for (const auto& row : rows_) {
      used = used || (row[i].text != "-" && !row[i].text.empty());
      column.width = std::max(column.width, Width(row[i].text));
    }
    if (used) columns.push_back(column);
  }
  std::string line;
  for (const Column& column : columns) {
    Put(line, column, &column == &columns.back(), column.name, palette(Colour::kBold, column.name));
  }
  out.Print("{}\n", line);
  for (const auto& row : rows_) {
    line.clear();
    for (const Column& column : columns) {
      const Cell& cell = row[column.index];
      Put(line, column, &column == &columns.back(), cell.text, palette(cell.colour, cell.text));
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    out.Print("{}\n", line);
  }
}

}  // namespace zorl2_inspect
