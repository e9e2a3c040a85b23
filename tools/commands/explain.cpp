#include <fmt/format.h>
#include <unistd.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tools/commands/arguments.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/check_text.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/text/wrap.h"
#include "tools/views/explain_json.h"
#include "tools/views/explain_view.h"

namespace zorl2_inspect {
namespace {

struct ExplainArguments {
  InputOptions input;
  std::string colour = "auto";
  bool json = false;
  std::size_t bytes = ExplainOptions().bytes;
  std::optional<std::size_t> width;
};

// The line after the fields of a message.
std::string Totals(const ExplainSummary& summary, std::size_t bytes) {
  std::string text = fmt::format("{} bytes, {} fields", bytes, summary.fields);
  for (std::size_t i = 0; i < summary.notes.size(); ++i) {
    if (summary.notes[i] == 0) continue;
    text += fmt::format(", {} {}", summary.notes[i], NoteName(static_cast<Note::Kind>(i)));
  }
  return text;
}

class ExplainCommand {
 public:
  explicit ExplainCommand(const ExplainArguments& arguments)
      : input_(arguments.input),
        paint_(PaletteFor(arguments.colour)),
        options_{paint_.on(), arguments.bytes,
                 arguments.width.value_or(TerminalWidth(STDOUT_FILENO))},
        text_(TextRows(options_, output_)) {
    if (arguments.json) json_ = std::make_unique<ExplainJson>(output_, input_.delimited());
  }

  int Run() {
    Record record;
    while (input_.Next(record)) {
      if (record.damage) input_.Fail(*record.damage);
      Message(record);
    }
    output_.Finish();
    return status_;
  }

 private:
  void Message(const Record& record) {
    const std::string& type = input_.type().name();
    if (json_) {
      json_->Begin(input_.name(), type, input_.delimited() ? record.number : 0, record.offset,
                   record.bytes.size());
    } else if (input_.delimited()) {
      output_.Print(
          "{}\n", paint_(Colour::kBold, fmt::format("record {}: {}, {} bytes", record.number, type,
                                                    record.bytes.size())));
    }
    const std::uint64_t first = input_.has_offsets() ? record.offset : 0;
    ExplainSummary summary = json_ ? Explain(record.bytes, input_.type(), first, *json_)
                                   : Explain(record.bytes, input_.type(), first, *text_);
    if (summary.damage && input_.delimited()) summary.damage->record = record.number;
    std::optional<Problem> rejection;
    if (!summary.damage && !Converts(summary.verdict)) {
      rejection = input_.Locate(record, summary.verdict);
      status_ = std::max(status_, kExitDifferent);
    }
    if (json_) {
      json_->End(summary.damage, rejection);
    } else {
      Print(Totals(summary, record.bytes.size()), Colour::kPlain);
      if (rejection) Print("rejected: " + ProblemText(*rejection), Colour::kRed);
      if (input_.delimited()) output_.Write('\n');
    }
    if (!summary.damage) return;
    output_.Flush();
    PrintError(Error(input_.name(), *summary.damage).what());
    status_ = kExitError;
  }

  void Print(const std::string& text, Colour colour) {
    const std::size_t width = options_.width == 0 ? text.size() + 1 : options_.width;
    for (const std::string& line : Wrap(text, width, width)) {
      output_.Print("{}\n", paint_(colour, line));
    }
  }

  Input input_;
  Output output_;
  Palette paint_;
  ExplainOptions options_;
  std::unique_ptr<ExplainRows> text_;
  std::unique_ptr<ExplainJson> json_;
  int status_ = kExitOk;
};

}  // namespace

void AddExplainCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ExplainArguments>();
  CLI::App* command =
      app.add_subcommand("explain", "Print the bytes of a message next to their meaning");
  AddInputOptions(*command, arguments->input);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  command
      ->add_option(
          "--width", arguments->width,
          "Fit lines into so many columns, 0 for any number; if omitted, those of the terminal, "
          "elsewhere any number")
      ->check(WholeNumber())
      ->type_name("COLUMNS");
  command->add_option("--bytes", arguments->bytes, "Print so many bytes of one field")
      ->check(WholeNumber())
      ->capture_default_str()
      ->type_name("N");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Prints offset, bytes, field path, type and value of every field, and what the conversion to "
      "native replaces, narrows, drops, defaults or rejects. Lines of less than 150 columns have "
      "the names of the fields as a tree, without their types.\n\n"
      "Exit status: 0 the message converts, 1 the conversion rejects it, 2 the bytes are no "
      "message. A damaged message is explained up to the damage and, where possible, after it.\n\n"
      "Example, an identifier with one value that is too large:\n"
      "  echo '0a 05 00 00 01 ac 02' | zorl2-inspect explain --type Zorid -");
  command->callback([arguments, &status] { status = ExplainCommand(*arguments).Run(); });
}

}  // namespace zorl2_inspect
