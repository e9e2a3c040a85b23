#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/filter.h"
#include "tools/model/message_types.h"
#include "tools/text/characters.h"
#include "tools/text/error.h"
#include "tools/text/live_screen.h"
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

class Summary {
 public:
  explicit Summary(const SummaryArguments& arguments)
      : json_(arguments.json),
        palette_(PaletteFor(arguments.colour)),
        screen_(arguments.input.follow && !arguments.json),
        input_(WithHooks(arguments.input)),
        filter_(input_.type(), arguments.where) {
    if (!HasEntries(input_.type())) {
      throw Error(input_.name(), input_.type().name(),
                  "IntfEntry, IntfEntryList or IntfIndication; \"zorl2-inspect stats\" counts "
                  "streams of any type");
    }
    report_.name = input_.name();
    report_.type = input_.type().name();
    report_.is_stream = input_.delimited();
    report_.filtered = !filter_.empty();
  }

  int Run() {
    const auto message = NewMessage(input_.type());
    Progress progress(screen_.on() ? 0 : input_.size());
    Record record;
    while (input_.Next(record)) {
      if (record.damage && input_.AtEnd()) {
        report_.broken = record.damage;
        break;
      }
      Take(record, *message);
      if (screen_.on()) {
        Refresh();
      } else {
        progress.Update(input_.consumed(), report_.records);
      }
    }
    progress.Finish();
    screen_.Clear();
    Output output;
    Print(output);
    output.Finish();
    NoteNothingSelected(input_.name(), filter_);
    if (report_.broken) {
      PrintError(fmt::format("{}: {}", input_.name(), ProblemText(*report_.broken)));
    }
    if (input_.CannotRead()) return kExitError;
    if (!input_.delimited() && report_.first_unreadable) input_.Fail(*report_.first_unreadable);
    const bool good =
        !report_.broken && report_.unreadable == 0 && report_.list.rejected.count == 0;
    return good ? kExitOk : kExitDifferent;
  }

 private:
  InputOptions WithHooks(InputOptions options) {
    options.before_wait = [this] { Refresh(); };
    return options;
  }

  void Take(const Record& record, google::protobuf::Message& message) {
    ++report_.records;
    const std::optional<Problem> problem =
        record.damage ? record.damage : input_.Parse(record, message);
    if (problem) {
      ++report_.unreadable;
      if (!report_.first_unreadable) report_.first_unreadable = problem;
      // A single message is summarised up to the damage.
      if (input_.delimited()) return;
    }
    if (filter_.Apply(&message)) report_.list.Add(message);
  }

  void Refresh() {
    screen_.Refresh(report_.records, [this](Output& screen) { Print(screen); });
  }

  void Print(Output& output) const {
    if (json_) {
      PrintSummaryAsJson(report_, output);
    } else {
      PrintSummary(report_, palette_, CanShowUtf8(), output);
    }
  }

  bool json_;
  Palette palette_;
  SummaryReport report_;
  LiveScreen screen_;
  // The constructor reads, and may call Refresh() before it waits.
  Input input_;
  Filter filter_;
};

}  // namespace

void AddSummaryCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<SummaryArguments>();
  CLI::App* command = app.add_subcommand(
      "summary", "Summarise interfaces on one screen: what is down, held, odd or lost");
  AddInputOptions(*command, arguments->input);
  AddFollowOption(*command, arguments->input);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  AddWhereOption(*command, arguments->where);
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Counts the entries of a list or stream by category, type and status, names ports that are "
      "down although enabled, shut or blocked by a protocol, and those whose MTU, speed or duplex "
      "mode is not that of most others of their type and category. Counts the values that a "
      "conversion to native loses and the entries that it rejects. Draws the ports (type ETHERNET, "
      "category L1 or L2) by the number at the end of their names, the odd ones above. Streams of "
      "any length need the same memory. \"zorl2-inspect show --help\" describes the conditions of "
      "--where. With --follow on a terminal the screen is refreshed; Ctrl-C prints it as it is "
      "then.\n\n"
      "Exit status: 0 all entries convert, 1 some do not, or the stream ends inside a record, 2 "
      "the input cannot be read.\n\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect summary -");
  command->callback([arguments, &status] { status = Summary(*arguments).Run(); });
}

}  // namespace zorl2_inspect
