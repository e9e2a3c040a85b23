#include "tools/explain_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "tools/colour_option.h"
#include "tools/colours.h"
#include "tools/error.h"
#include "tools/explain.h"
#include "tools/input_options.h"
#include "tools/output_check.h"

namespace zorl2_inspect {
namespace {

struct ExplainArguments {
  InputOptions input;
  std::string colour = "auto";
  std::size_t bytes = ExplainOptions().bytes;
};

// The last line under the fields of a message.
std::string Verdict(const ExplainSummary& summary, std::size_t bytes) {
  std::string text = fmt::format("{} bytes, {} fields", bytes, summary.fields);
  for (std::size_t i = 0; i < summary.notes.size(); ++i) {
    if (summary.notes[i] == 0) continue;
    text += fmt::format(", {} {}", summary.notes[i], NoteName(static_cast<Note::Kind>(i)));
  }
  if (summary.errors > 0) text += fmt::format(", {} malformed", summary.errors);
  return text;
}

int ExplainCommand(const ExplainArguments& options) {
  Input input(options.input);
  ExplainOptions how;
  how.colours = UseColours(options.colour, STDOUT_FILENO);
  how.bytes = options.bytes;
  const Palette paint(how.colours);
  int status = kExitOk;
  Record record;
  while (input.Next(record)) {
    if (input.delimited()) {
      fmt::print("{}\n",
                 paint(Colour::kBold, fmt::format("record {}: {}, {} bytes", record.number,
                                                  input.type().name(), record.bytes.size())));
    }
    const ExplainSummary summary = Explain(record.bytes, input.type(), record.offset, how, stdout);
    fmt::print("{}{}", Verdict(summary, record.bytes.size()), input.delimited() ? "\n\n" : "\n");
    if (summary.problem.empty()) continue;
    PrintError(fmt::format("{}: {}", input.name(), summary.problem));
    status = kExitError;
  }
  return status;
}

}  // namespace

void AddExplainCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ExplainArguments>();
  CLI::App* command =
      app.add_subcommand("explain", "Print the bytes of a message beside what they mean");
  AddInputOptions(*command, options->input);
  command->add_option("--bytes", options->bytes, "How many bytes of one field are printed")
      ->capture_default_str()
      ->type_name("N");
  AddColourOption(*command, options->colour);
  command->footer(
      "Offset, bytes, field path, type and value of every field, and what the conversion to "
      "native\n"
      "narrows, defaults, drops or refuses.\n\n"
      "A message that the runtime refuses is explained up to the damage and behind it; the exit\n"
      "status is then 2.\n\n"
      "Example, an identifier with one value too wide for an octet:\n"
      "  printf '0a 05 00 00 01 ac 02' | zorl2-inspect explain --input hex --type Zorid -");
  command->callback(
      [options, &status] { status = WithOutput([&] { return ExplainCommand(*options); }); });
}

}  // namespace zorl2_inspect
