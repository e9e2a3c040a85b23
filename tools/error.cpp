#include "tools/error.h"

#include <fmt/format.h>

#include <cstdio>

namespace zorl2_inspect {
namespace {

void PrintLine(std::string_view line) {
  std::string safe = "zorl2-inspect: ";
  for (const char character : line) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7f) {
      safe += fmt::format("\\x{:02x}", byte);
    } else {
      safe += character;
    }
  }
  safe += '\n';
  std::fflush(stdout);
  std::fwrite(safe.data(), 1, safe.size(), stderr);
}

std::string Line(std::string_view file, std::string_view where, std::string_view problem) {
  if (where.empty()) return fmt::format("{}: {}", file, problem);
  return fmt::format("{}: {}: {}", file, where, problem);
}

}  // namespace

InputError::InputError(std::string_view file, std::string_view where, std::string_view problem)
    : std::runtime_error(Line(file, where, problem)) {}

void PrintError(std::string_view line) { PrintLine(line); }

void PrintNote(std::string_view line) { PrintLine(line); }

}  // namespace zorl2_inspect
