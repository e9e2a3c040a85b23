#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/filter.h"
#include "tools/model/record_counter.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/text/progress.h"
#include "tools/views/stats_view.h"

namespace zorl2_inspect {
namespace {

struct StatsArguments {
  InputOptions input;
  bool json = false;
  std::vector<std::string> where;
  std::uint64_t listed = 20;
};

int RunStats(const StatsArguments& arguments) {
  Input input(arguments.input);
  Output output;
  StatsView view(output, arguments.json, arguments.listed);
  view.Begin(input.name(), input.type().name());
  Filter filter(input.type(), arguments.where);
  RecordCounter counter(input.type(), &filter);
  RecordSummary summary;
  Progress progress(input.size());
  std::optional<Problem> broken;
  Record record;
  while (input.Next(record)) {
    const std::uint64_t size = input.consumed() - record.offset;
    RecordOutcome outcome = RecordOutcome::kMalformed;
    Problem problem;
    if (record.damage) {
      problem = *record.damage;
      problem.record = 0;
      if (input.AtEnd()) {
        broken = problem;
        break;
      }
    } else {
      const auto taken = counter.Take(record.bytes, &problem);
      if (!taken) {
        ++summary.left_out;
        progress.Update(input.consumed(), summary.records);
        continue;
      }
      outcome = *taken;
      if (problem.offset) *problem.offset += record.offset;
    }
    summary.Add(size);
    ++summary.outcomes[static_cast<std::size_t>(outcome)];
    if (outcome != RecordOutcome::kGood) {
      view.Bad({record.number, record.offset, size, outcome, std::move(problem)});
    }
    progress.Update(input.consumed(), summary.records);
  }
  summary.seconds = progress.Seconds();
  progress.Finish();
  summary.conversions = counter.conversions();
  view.End(summary, counter.Sections(), broken ? ProblemText(*broken) : std::string());
  output.Finish();
  NoteNothingSelected(input.name(), filter);
  if (broken) input.Fail(*broken);
  const std::uint64_t good = summary.outcomes[static_cast<std::size_t>(RecordOutcome::kGood)];
  return good == summary.records ? kExitOk : kExitDifferent;
}

}  // namespace

void AddStatsCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<StatsArguments>();
  arguments->input.delimited = true;
  arguments->input.longest = std::size_t{16} << 20;
  CLI::App* command =
      app.add_subcommand("stats", "Count the contents of a stream of length-prefixed messages");
  command->add_option("FILE", arguments->input.file, "The stream to read; - for standard input")
      ->required()
      ->type_name("");
  AddTypeOption(*command, arguments->input.type);
  command->add_flag_callback(
      "--delimited", [] {}, "Accepted for symmetry; the input of stats is always length-prefixed");
  AddWhereOption(*command, arguments->where);
  command->add_flag("--json", arguments->json, "Print JSON");
  command->add_option("--list", arguments->listed, "List so many records that are not good")
      ->capture_default_str()
      ->type_name("N");
  command
      ->add_option("--longest", arguments->input.longest,
                   "Skip records of more bytes than this, and count them as malformed")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1} << 30))
      ->capture_default_str()
      ->type_name("BYTES");
  command->footer(
      "Converts every message to native and back, counts types, categories, protocols, sizes and\n"
      "what the conversion changes, and lists the records that do not convert.\n\n"
      "Needs the same memory for any stream. Exit status: 0 all records are good, 1 some are not,\n"
      "2 the stream cannot be read to its end. \"zorl2-inspect show --help\" describes the "
      "conditions\n"
      "of --where; they do not leave out records that are no messages.\n\n"
      "Example, two records of which the second is too short for an identifier:\n"
      "  printf '\\6\\n\\4\\0\\0\\0\\7\\5\\n\\3\\0\\0\\7' | zorl2-inspect stats --type Zorid -");
  command->callback([arguments, &status] { status = RunStats(*arguments); });
}

}  // namespace zorl2_inspect
