#include "tools/text/error.h"

#include <fmt/format.h>

#include <cstdio>
#include <utility>

#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

void PrintLine(std::string_view line) {
  const std::string safe = fmt::format("zorl2-inspect: {}\n", Printable(line));
  std::fflush(stdout);
  std::fwrite(safe.data(), 1, safe.size(), stderr);
}

}  // namespace

std::string ProblemText(const Problem& problem) {
  std::string text;
  const auto append = [&text](const char* separator, const std::string& part) {
    if (!text.empty()) text += separator;
    text += part;
  };
  if (problem.record != 0) append("", fmt::format("record {}", problem.record));
  if (problem.offset) append(", ", fmt::format("offset {:#x}", *problem.offset));
  if (problem.place) {
    append(", ", fmt::format("line {}, column {}", problem.place->line, problem.place->column));
  }
  if (!problem.path.empty()) append(": ", problem.path);
  append(": ", problem.found);
  if (!problem.expected.empty()) text += fmt::format(" (expected {})", problem.expected);
  if (!problem.rule_name.empty()) text += fmt::format(" [{}]", problem.rule_name);
  return text;
}

Error::Error(std::string_view subject, const Problem& problem)
    : std::runtime_error(fmt::format("{}: {}", subject, ProblemText(problem))) {}

Error::Error(std::string_view subject, std::string found, std::string expected)
    : Error(subject,
            Problem{0, std::nullopt, std::nullopt, "", std::move(found), std::move(expected)}) {}

void PrintError(std::string_view line) { PrintLine(line); }

void PrintNote(std::string_view line) { PrintLine(line); }

}  // namespace zorl2_inspect
