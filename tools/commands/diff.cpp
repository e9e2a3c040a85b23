#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/input/message_reader.h"
#include "tools/model/changes.h"
#include "tools/model/filter.h"
#include "tools/model/findings.h"
#include "tools/model/message_types.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/views/changes_view.h"

namespace zorl2_inspect {
namespace {

struct DiffArguments {
  InputOptions input;
  std::string before;
  std::string after;
  bool json = false;
  bool strict = false;
  std::vector<std::string> where;
  std::string colour = "auto";
};

using google::protobuf::Message;

struct Capture {
  DiffSide side;
  std::vector<std::unique_ptr<Message>> owned;
  int status = kExitOk;
  std::unique_ptr<Filter> filter;
};

Capture Read(const DiffArguments& arguments, const std::string& file) {
  InputOptions options = arguments.input;
  options.file = file;
  options.strict = arguments.strict;
  Input input(options);
  MessageReader reader(input, arguments.strict, {});
  Capture capture;
  capture.side.name = input.name();
  if (!arguments.where.empty()) {
    capture.filter = std::make_unique<Filter>(input.type(), arguments.where);
    capture.side.filter = capture.filter.get();
  }
  Record record;
  for (;;) {
    std::unique_ptr<Message> message = NewMessage(input.type());
    if (!reader.Next(record, *message)) break;
    // What a converter rejects can be compared; what lacks a field is not the whole message.
    if (!message->IsInitialized()) reader.Report(record, FindAll(*message).rejections);
    capture.side.records.push_back(message.get());
    capture.owned.push_back(std::move(message));
  }
  capture.status = reader.status();
  return capture;
}

int RunDiff(const DiffArguments& arguments) {
  if (arguments.before == "-" && arguments.after == "-") {
    throw Error("standard input", "both captures", "one of them in a file");
  }
  const Capture before = Read(arguments, arguments.before);
  const Capture after = Read(arguments, arguments.after);
  const DiffResult result = Compare(before.side, after.side);
  Output output;
  if (arguments.json) {
    PrintChangesAsJson(before.side, after.side, result, output);
  } else {
    PrintChanges(before.side, after.side, result, PaletteFor(arguments.colour), output);
  }
  output.Finish();
  return std::max({before.status, after.status, result.equal() ? kExitOk : kExitDifferent});
}

}  // namespace

void AddDiffCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<DiffArguments>();
  CLI::App* command =
      app.add_subcommand("diff", "Compare two captures: list what was added, removed and changed");
  command->add_option("A", arguments->before, "Read the earlier capture from this file")
      ->required()
      ->type_name("");
  command
      ->add_option("B", arguments->after,
                   "Read the later one from this file; either may be - for standard input")
      ->required()
      ->type_name("");
  AddReadingOptions(*command, arguments->input);
  AddStrictOption(*command, arguments->strict);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  AddWhereOption(*command, arguments->where);
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Entries are paired by identifier, block entries by protocol, shutdown protocols as a set;\n"
      "their order makes no difference. A list can be compared with a single entry. Texts of\n"
      "more than 200 bytes are compared by lines. \"!!\" marks an element that does not convert.\n"
      "--where compares the elements that are selected before or after; \"zorl2-inspect show\n"
      "--help\" describes its conditions.\n\n"
      "Exit status: 0 equal, 1 different, or a message is damaged or lacks a field, 2 an input\n"
      "cannot be read.\n\n"
      "Example:\n"
      "  printf 'value: [0,0,0,7]' > a.txt; printf 'value: [0,0,0,8]' > b.txt\n"
      "  zorl2-inspect diff --type Zorid a.txt b.txt");
  command->callback([arguments, &status] { status = RunDiff(*arguments); });
}

}  // namespace zorl2_inspect
