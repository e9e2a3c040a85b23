#include "tools/commands/help.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <string>

#include "tools/text/wrap.h"

namespace zorl2_inspect {
namespace {

constexpr std::size_t kWidth = 79;
constexpr std::size_t kColumn = 22;

// Lines that begin with a blank, and empty ones, remain; the others are one paragraph.
std::string Reflowed(const std::string& text) {
  std::string out;
  std::string paragraph;
  const auto end_paragraph = [&] {
    if (paragraph.empty()) return;
    for (const std::string& line : Wrap(paragraph, kWidth, kWidth)) out += line + '\n';
    paragraph.clear();
  };
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == ' ') {
      end_paragraph();
      out += line + '\n';
    } else {
      paragraph += (paragraph.empty() ? "" : " ") + line;
    }
  }
  end_paragraph();
  return out;
}

// "  --type NAME         Set the message type; inferred if omitted"
std::string Item(const std::string& name, std::string description) {
  std::replace(description.begin(), description.end(), '\n', ' ');
  const std::string head = "  " + name;
  const bool fits = head.size() + 2 <= kColumn;
  std::string out = fits ? fmt::format("{:<{}}", head, kColumn) : head + '\n';
  bool first = fits;
  for (const std::string& line : Wrap(description, kWidth - kColumn, kWidth - kColumn)) {
    out += fmt::format("{:{}}{}\n", "", first ? 0 : kColumn, line);
    first = false;
  }
  return out;
}

// " (one of: table, json; default: table)". The library has the values after the name of the type,
// in braces.
std::string Values(const std::string& type, const std::string& usual) {
  std::string text;
  const std::size_t begin = type.find('{');
  if (begin != std::string::npos) {
    text = "one of: ";
    for (const char c : type.substr(begin + 1, type.find('}') - begin - 1)) {
      text += c;
      if (c == ',') text += ' ';
    }
  }
  if (!usual.empty()) text += (text.empty() ? "" : "; ") + ("default: " + usual);
  return text.empty() ? "" : fmt::format(" ({})", text);
}

class Help : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* option, bool is_positional) const override {
    std::string name = make_option_name(option, is_positional);
    // A flag has no value.
    const std::string type = option->get_type_size() == 0 ? "" : option->get_type_name();
    const std::string placeholder = type.substr(0, type.find(':'));
    if (!placeholder.empty()) name += ' ' + placeholder;
    return Item(name, option->get_description() + Values(type, option->get_default_str()));
  }
  std::string make_subcommand(const CLI::App* command) const override {
    return Item(command->get_name(), command->get_description());
  }
  std::string make_description(const CLI::App* app) const override {
    return Reflowed(app->get_description());
  }
  std::string make_footer(const CLI::App* app) const override {
    return Reflowed(app->get_footer());
  }
};

}  // namespace

std::shared_ptr<CLI::FormatterBase> HelpFormatter() {
  auto help = std::make_shared<Help>();
  help->label("SUBCOMMAND", "COMMAND");
  return help;
}

}  // namespace zorl2_inspect
