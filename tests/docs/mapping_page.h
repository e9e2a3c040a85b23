// docs/mapping.md as data: its sections and the tables in them.
#pragma once

#include <map>
#include <string>
#include <vector>

// One line of a table, by column heading, without backquotes.
using Row = std::map<std::string, std::string>;

struct Section {
  std::vector<Row> rows;
  // The headings of the section's table, in order.
  std::vector<std::string> columns;
};

// The sections by heading, of second and third level alike.
std::map<std::string, Section> ReadMappingPage(const std::string& path);
