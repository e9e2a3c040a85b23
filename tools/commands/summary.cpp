#include <CLI/App.hpp>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/filter.h"
#include "tools/model/message_types.h"
#include "tools/text/characters.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/text/progress.h"
#include "tools/views/summary_view.h"

namespace zorl2_inspect {
namespace {

struct SummaryArguments {
  InputOptions input;
  bool json = false;
  std::vector<std::string> where;
  std::string colour = "auto";
};

int RunSummary(const SummaryArguments& arguments) {
  Input input(arguments.input);
  if (!HasEntries(input.type())) {
    throw Error(
        input.name(), input.type().name(),
        "IntfEntry, IntfEntryList or IntfIndication; \"zorl2-inspect stats\" counts streams "
        "of any type");
  }
  Filter filter(input.type(), arguments.where);
  SummaryReport report;
  report.name = input.name();
  report.type = input.type().name();
  report.is_stream = input.delimited();
  report.filtered = !filter.empty();
  const auto message = NewMessage(input.type());
  std::optional<Problem> broken;
  Progress progress(input.size());
  Record record;
  while (input.Next(record)) {
    std::optional<Problem> problem = record.damage;
    if (problem && input.AtEnd()) {
      broken = std::move(problem);
      break;
    }
    ++report.records;
    if (!problem) problem = input.Parse(record, *message);
    if (problem) {
      ++report.unreadable;
      if (!report.first_unreadable) report.first_unreadable = std::move(problem);
    } else if (filter.Apply(message.get())) {
      report.list.Add(*message);
    }
    progress.Update(input.consumed(), report.records);
  }
  progress.Finish();
  Output output;
  if (arguments.json) {
    PrintSummaryAsJson(report, output);
  } else {
    PrintSummary(report, PaletteFor(arguments.colour), CanShowUtf8(), output);
  }
  output.Finish();
  NoteNothingSelected(input.name(), filter);
  if (broken) input.Fail(*broken);
  if (!input.delimited() && report.first_unreadable) input.Fail(*report.first_unreadable);
  return report.unreadable == 0 && report.list.rejected.count == 0 ? kExitOk : kExitDifferent;
}

}  // namespace

void AddSummaryCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<SummaryArguments>();
  CLI::App* command = app.add_subcommand(
      "summary", "Summarise interfaces on one screen: what is down, held, odd or lost");
  AddInputOptions(*command, arguments->input);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  AddWhereOption(*command, arguments->where);
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Counts the entries of a list or stream by category, type and status, names ports that are\n"
      "down although enabled, shut or blocked by a protocol, and those whose MTU, speed or duplex\n"
      "mode is not that of most others of their type and category. Counts the values that a\n"
      "conversion to native loses and the entries that it rejects. Draws the ports (type "
      "ETHERNET,\n"
      "category L1 or L2) by the number at the end of their names, the odd ones above. Streams of\n"
      "any length need the same memory. \"zorl2-inspect show --help\" describes the conditions of\n"
      "--where.\n\n"
      "Exit status: 0 all entries convert, 1 some do not, 2 error.\n\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect summary -");
  command->callback([arguments, &status] { status = RunSummary(*arguments); });
}

}  // namespace zorl2_inspect
