#include "tools/commands/options.h"

#include <fmt/format.h>
#include <unistd.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <map>

#include "tools/input/waiting.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

void AddTypeOption(CLI::App& command, std::string& type) {
  command.add_option("--type", type, "Set the message type; inferred if omitted")
      ->type_name("NAME");
}

void AddReadingOptions(CLI::App& command, InputOptions& options) {
  AddTypeOption(command, options.type);
  static const std::map<std::string, InputForm> forms = {{"wire", InputForm::kWire},
                                                         {"hex", InputForm::kHex},
                                                         {"json", InputForm::kJson},
                                                         {"text", InputForm::kText}};
  command
      .add_option_function<std::string>(
          "--input", [&options](const std::string& name) { options.form = forms.at(name); },
          "Set the form of the input; inferred if omitted")
      ->check(CLI::IsMember({"wire", "hex", "json", "text"}))
      ->type_name("FORM");
  command.add_flag("--delimited", options.delimited,
                   "Read a stream: each message after its length as a varint, or as JSON on a line "
                   "of its own; by default the input is one message");
}

void AddInputOptions(CLI::App& command, InputOptions& options) {
  command.add_option("FILE", options.file, "Read this file; - for standard input")
      ->required()
      ->type_name("");
  AddReadingOptions(command, options);
}

void AddStrictOption(CLI::App& command, bool& strict) {
  command.add_flag("--strict", strict,
                   "End with status 2 at the first message that is damaged or does not convert; by "
                   "default it is marked, and the status is 1");
}

void AddFollowOption(CLI::App& command, InputOptions& options) {
  command.add_flag_callback(
      "--follow",
      [&options] {
        options.follow = true;
        CatchInterrupts();
      },
      "Wait for more at the end of a stream, until Ctrl-C; by default the command ends there");
}

void AddForceOption(CLI::App& command, bool& force) {
  command.add_flag("--force", force,
                   "Write wire bytes to a terminal, too; by default that is an error");
}

void AddWhereOption(CLI::App& command, std::vector<std::string>& conditions) {
  command
      .add_option(
          "--where", conditions,
          "Select by FIELD OP VALUE, such as oper=DOWN; all conditions must hold. OP is\n"
          "= != < <= > >= or ~ (a part of the text, or a pattern with * and ?). Everything\n"
          "is selected if omitted")
      ->allow_extra_args(false)
      ->type_name("CONDITION");
}

void NoteNothingSelected(const std::string& name, const Filter& filter) {
  if (filter.empty() || filter.selected() > 0) return;
  PrintNote(fmt::format("{}: none of {} elements is selected by --where", name, filter.seen()));
}

void AddColourOption(CLI::App& command, std::string& when) {
  command
      .add_option("--color", when, "Use colours; auto does on a terminal, unless NO_COLOR is set")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str()
      ->type_name("WHEN");
}

Palette PaletteFor(const std::string& when) { return Palette(UseColours(when, STDOUT_FILENO)); }

}  // namespace zorl2_inspect
