#include "tools/diff_command.h"

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/colour_option.h"
#include "tools/colours.h"
#include "tools/diff.h"
#include "tools/error.h"
#include "tools/input_options.h"
#include "tools/message_types.h"
#include "tools/output_check.h"

namespace zorl2_inspect {
namespace {

struct DiffArguments {
  InputOptions input;
  std::string before;
  std::string after;
  bool json = false;
  std::string colour = "auto";
};

using google::protobuf::Message;

struct Capture {
  DiffSide side;
  std::vector<std::unique_ptr<Message>> owned;
};

Capture Read(InputOptions options, const std::string& file) {
  options.file = file;
  Input input(options);
  Capture capture;
  capture.side.name = input.name();
  Record record;
  while (input.Next(record)) {
    std::unique_ptr<Message> message = NewMessage(input.type());
    input.Parse(record, *message);
    capture.side.records.push_back(message.get());
    capture.owned.push_back(std::move(message));
  }
  return capture;
}

int DiffCommand(const DiffArguments& options) {
  if (options.before == "-" && options.after == "-") {
    throw InputError("standard input", "", "expected another capture to compare it with");
  }
  const Capture before = Read(options.input, options.before);
  const Capture after = Read(options.input, options.after);
  DiffResult result;
  std::string problem;
  if (!Compare(before.side, after.side, &result, &problem)) {
    throw InputError(after.side.name, "", problem);
  }
  if (options.json) {
    PrintChangesAsJson(before.side, after.side, result, stdout);
  } else {
    const Palette paint(UseColours(options.colour, STDOUT_FILENO));
    PrintChanges(before.side, after.side, result, paint, stdout);
  }
  return result.equal() ? kExitOk : kExitDifferent;
}

}  // namespace

void AddDiffCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<DiffArguments>();
  CLI::App* command =
      app.add_subcommand("diff", "Tell what was added, removed and changed between two captures");
  command->add_option("A", options->before, "The earlier capture")->required()->type_name("");
  command->add_option("B", options->after, "The later capture; one of both may be -")
      ->required()
      ->type_name("");
  AddReadingOptions(*command, options->input);
  command->add_flag("--json", options->json, "Print JSON");
  AddColourOption(*command, options->colour);
  command->footer(
      "Entries are paired by identifier, block entries by protocol, shutdown protocols as a set;\n"
      "their order makes no difference. A list can be compared with a single entry. Exit status:\n"
      "0 equal, 1 different, 2 error.\n\n"
      "Example:\n"
      "  printf 'value: [0,0,0,7]' > a.txt; printf 'value: [0,0,0,8]' > b.txt\n"
      "  zorl2-inspect diff --type Zorid a.txt b.txt");
  command->callback(
      [options, &status] { status = WithOutput([&] { return DiffCommand(*options); }); });
}

}  // namespace zorl2_inspect
