#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/commands/arguments.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/filter.h"
#include "tools/model/record_counter.h"
#include "tools/text/error.h"
#include "tools/text/live_screen.h"
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

class Stats {
 public:
  explicit Stats(const StatsArguments& arguments)
      : screen_(arguments.input.follow && !arguments.json),
        view_(output_, arguments.json, arguments.listed),
        input_(WithHooks(arguments)),
        filter_(input_.type(), arguments.where),
        counter_(input_.type(), &filter_),
        progress_(screen_.on() ? 0 : input_.size()) {}

  int Run() {
    view_.Begin(input_.name(), input_.type().name());
    Record record;
    while (!broken_ && input_.Next(record)) {
      Take(record);
      if (screen_.on()) {
        Refresh();
      } else {
        progress_.Update(input_.consumed(), summary_.records);
      }
    }
    progress_.Finish();
    screen_.Clear();
    Sum();
    view_.End(summary_, counter_.Sections(), broken_);
    output_.Finish();
    NoteNothingSelected(input_.name(), filter_);
    if (broken_) PrintError(fmt::format("{}: {}", input_.name(), ProblemText(*broken_)));
    if (input_.CannotRead()) return kExitError;
    const std::uint64_t good = summary_.outcomes[static_cast<std::size_t>(RecordOutcome::kGood)];
    return good == summary_.records && !broken_ ? kExitOk : kExitDifferent;
  }

 private:
  InputOptions WithHooks(const StatsArguments& arguments) {
    InputOptions options = arguments.input;
    options.before_wait = [this] { Refresh(); };
    return options;
  }

  void Take(const Record& record) {
    const std::uint64_t size = input_.consumed() - record.offset;
    RecordOutcome outcome = RecordOutcome::kMalformed;
    Problem problem;
    if (record.damage) {
      problem = *record.damage;
      problem.record = 0;
      if (input_.AtEnd()) {
        broken_ = problem;
        return;
      }
    } else {
      const auto taken = counter_.Take(record.bytes, &problem);
      if (!taken) {
        ++summary_.left_out;
        return;
      }
      outcome = *taken;
      if (!input_.has_offsets()) problem.offset.reset();
      if (problem.offset) *problem.offset += record.offset;
    }
    summary_.Add(size);
    ++summary_.outcomes[static_cast<std::size_t>(outcome)];
    if (outcome == RecordOutcome::kGood) return;
    view_.Bad({record.number, record.offset, size, outcome, std::move(problem)});
  }

  void Sum() {
    summary_.seconds = progress_.Seconds();
    summary_.conversions = counter_.conversions();
  }

  void Refresh() {
    screen_.Refresh(summary_.records, [this](Output& screen) {
      Sum();
      StatsView view(screen, false, 0);
      view.Begin(input_.name(), input_.type().name());
      view.End(summary_, counter_.Sections(), std::nullopt);
    });
  }

  LiveScreen screen_;
  Output output_;
  StatsView view_;
  RecordSummary summary_;
  // The constructor reads, and may call Refresh() before it waits.
  Input input_;
  Filter filter_;
  RecordCounter counter_;
  Progress progress_;
  std::optional<Problem> broken_;
};

}  // namespace

void AddStatsCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<StatsArguments>();
  arguments->input.delimited = true;
  arguments->input.longest = std::size_t{16} << 20;
  CLI::App* command = app.add_subcommand("stats", "Count the contents of a stream of messages");
  command->add_option("FILE", arguments->input.file, "Read this stream; - for standard input")
      ->required()
      ->type_name("");
  AddTypeOption(*command, arguments->input.type);
  command->add_flag_callback(
      "--delimited", [] {}, "Read a stream, as stats always does");
  AddFollowOption(*command, arguments->input);
  AddWhereOption(*command, arguments->where);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  command->add_option("--list", arguments->listed, "List so many records that are not good")
      ->check(WholeNumber())
      ->capture_default_str()
      ->type_name("N");
  command
      ->add_option("--longest", arguments->input.longest,
                   "Skip records of more bytes than this, and count them as malformed")
      ->check(WholeNumber(1, std::size_t{1} << 30))
      ->capture_default_str()
      ->type_name("BYTES");
  command->footer(
      "Converts every message to native and back, counts types, categories, protocols, sizes and "
      "what the conversion changes, and lists the records that do not convert. Needs the same "
      "memory for any stream. With --follow on a terminal the report is refreshed; Ctrl-C prints "
      "it as it is then. \"zorl2-inspect show --help\" describes the conditions of --where; they "
      "do not leave out records that are no messages.\n\n"
      "Exit status: 0 all records are good, 1 some are not, or the stream ends inside a record, 2 "
      "the input cannot be read.\n\n"
      "Example, two records of which the second is too short for an identifier:\n"
      "  printf '\\6\\n\\4\\0\\0\\0\\7\\5\\n\\3\\0\\0\\7' | zorl2-inspect stats --type Zorid -");
  command->callback([arguments, &status] { status = Stats(*arguments).Run(); });
}

}  // namespace zorl2_inspect
