#include "tools/commands/arguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <system_error>

#include "tools/text/error.h"
#include "tools/text/nearest.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

std::string OptionLike(const CLI::App& command, const std::string& word) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return Nearest(word, names);
}

}  // namespace

CLI::Validator OneOf(const std::vector<std::string>& values) {
  return CLI::Validator(
      [values](const std::string& word) -> std::string {
        if (std::find(values.begin(), values.end(), word) != values.end()) return "";
        return fmt::format("{} (expected {})", Quoted(word), fmt::join(values, ", "));
      },
      fmt::format("{{{}}}", fmt::join(values, ",")));
}

CLI::Validator WholeNumber(std::size_t least, std::size_t most) {
  return CLI::Validator(
      [least, most](const std::string& word) -> std::string {
        std::size_t number = 0;
        const char* const end = word.data() + word.size();
        const auto parsed = std::from_chars(word.data(), end, number);
        const bool is_number = parsed.ec == std::errc() && parsed.ptr == end;
        if (is_number && number >= least && number <= most) return "";
        const bool bounded = most != std::numeric_limits<std::size_t>::max();
        return fmt::format("{} (expected a whole number{})", Quoted(word),
                           bounded ? fmt::format(" from {} to {}", least, most) : "");
      },
      "");
}

std::string ArgumentErrorText(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  if (commands.empty()) return fmt::format("{} (see \"zorl2-inspect --help\")", error.what());
  const CLI::App& command = *commands.front();
  const std::string& name = command.get_name();
  const std::vector<std::string> rest = app.remaining(true);
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && !rest.empty()) {
    const std::string& word = rest.front();
    const bool is_option = word.size() > 1 && word[0] == '-';
    return Error(name, Quoted(word), is_option ? OptionLike(command, word) : "no further argument")
        .what();
  }
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) {
    return fmt::format("{}: {}", name, error.what());
  }
  return fmt::format("{}: {} (see \"zorl2-inspect {} --help\")", name, error.what(), name);
}

}  // namespace zorl2_inspect
