#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/check_text.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/views/explain_view.h"

namespace zorl2_inspect {
namespace {

struct ExplainArguments {
  InputOptions input;
  std::string colour = "auto";
  std::size_t bytes = ExplainOptions().bytes;
};

// The line after the fields of a message.
std::string Totals(const ExplainSummary& summary, std::size_t bytes) {
  std::string text = fmt::format("{} bytes, {} fields", bytes, summary.fields);
  for (std::size_t i = 0; i < summary.notes.size(); ++i) {
    if (summary.notes[i] == 0) continue;
    text += fmt::format(", {} {}", summary.notes[i], NoteName(static_cast<Note::Kind>(i)));
  }
  if (summary.errors > 0) text += fmt::format(", {} malformed", summary.errors);
  return text;
}

int RunExplain(const ExplainArguments& arguments) {
  Input input(arguments.input);
  Output output;
  const Palette paint = PaletteFor(arguments.colour);
  const ExplainOptions how{paint.on(), arguments.bytes};
  int status = kExitOk;
  Record record;
  while (input.Next(record)) {
    if (record.damage) input.Fail(*record.damage);
    if (input.delimited()) {
      output.Print("{}\n",
                   paint(Colour::kBold, fmt::format("record {}: {}, {} bytes", record.number,
                                                    input.type().name(), record.bytes.size())));
    }
    const ExplainSummary summary = Explain(record.bytes, input.type(), record.offset, how, output);
    output.Print("{}{}", Totals(summary, record.bytes.size()), input.delimited() ? "\n\n" : "\n");
    std::optional<Problem> problem = summary.damage;
    if (!problem && IsIncomplete(summary.verdict)) problem = input.Locate(record, summary.verdict);
    if (!problem) continue;
    output.Flush();
    PrintError(Error(input.name(), *problem).what());
    status = kExitError;
  }
  output.Finish();
  return status;
}

}  // namespace

void AddExplainCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ExplainArguments>();
  CLI::App* command =
      app.add_subcommand("explain", "Print the bytes of a message next to their meaning");
  AddInputOptions(*command, arguments->input);
  command->add_option("--bytes", arguments->bytes, "Print so many bytes of one field")
      ->capture_default_str()
      ->type_name("N");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Prints offset, bytes, field path, type and value of every field, and what the conversion "
      "to\n"
      "native replaces, narrows, drops, defaults or rejects.\n\n"
      "Exit status: 0 the bytes are a complete message, 2 they are not. A damaged message is\n"
      "explained up to the damage and, where possible, after it.\n\n"
      "Example, an identifier with one value that is too large:\n"
      "  printf '0a 05 00 00 01 ac 02' | zorl2-inspect explain --input hex --type Zorid -");
  command->callback([arguments, &status] { status = RunExplain(*arguments); });
}

}  // namespace zorl2_inspect
