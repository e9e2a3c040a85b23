#include "docs/mapping_page.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

std::string Trim(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  while (!text.empty() && text.front() == ' ') text.erase(0, 1);
  return text;
}

// | a | b | has the cells a and b.
std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::string cell;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '|') {
      cells.push_back(Trim(cell));
      cell.clear();
    } else if (line[i] != '`') {
      cell += line[i];
    }
  }
  return cells;
}

}  // namespace

std::map<std::string, Section> ReadMappingPage(const std::string& path) {
  std::ifstream file(path);
  EXPECT_TRUE(file) << "cannot read " << path;
  std::map<std::string, Section> sections;
  Section* section = &sections[""];
  std::string line;
  while (std::getline(file, line)) {
    if (line.rfind("## ", 0) == 0 || line.rfind("### ", 0) == 0) {
      section = &sections[Trim(line.substr(line.find(' ')))];
    } else if (line.rfind("|---", 0) == 0) {
      continue;
    } else if (!line.empty() && line[0] == '|') {
      const std::vector<std::string> cells = Cells(line);
      if (section->columns.empty()) {
        section->columns = cells;
        continue;
      }
      EXPECT_EQ(cells.size(), section->columns.size()) << "docs/mapping.md: " << line;
      Row row;
      for (std::size_t i = 0; i < cells.size() && i < section->columns.size(); ++i) {
        row[section->columns[i]] = cells[i];
      }
      section->rows.push_back(row);
    }
  }
  return sections;
}
