// zorl2-inspect: shows messages of package zorl2.protobuf and what their conversion does.
#include <fmt/format.h>
#include <google/protobuf/stubs/logging.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/help.h"
#include "tools/text/error.h"
#include "tools/text/output.h"

namespace {

// How many letters must be inserted, removed or replaced, or swapped with the next one.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      const std::size_t replaced = cost[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      cost[i][j] = std::min({replaced, cost[i - 1][j] + 1, cost[i][j - 1] + 1});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
    }
  }
  return cost[a.size()][b.size()];
}

bool IsCommand(const CLI::App& app, const std::string& word) {
  const auto commands = app.get_subcommands(nullptr);
  return std::any_of(commands.begin(), commands.end(),
                     [&](const CLI::App* command) { return command->get_name() == word; });
}

// The command that is most like the word, or all of them if none is.
std::string Suggestion(const CLI::App& app, const std::string& word) {
  constexpr std::size_t kMostEdits = 2;
  std::string all;
  std::string best;
  std::size_t least = kMostEdits + 1;
  for (const CLI::App* command : app.get_subcommands(nullptr)) {
    const std::string& name = command->get_name();
    all += (all.empty() ? "" : ", ") + name;
    const std::size_t distance = Distance(word, name);
    if (distance < least && distance < name.size() - 1) {
      least = distance;
      best = name;
    }
  }
  return best.empty() ? "one of " + all : fmt::format("\"{}\"", best);
}

// Each subcommand runs from its callback and leaves its exit status here.
int Run(int argc, char** argv) {
  using namespace zorl2_inspect;
  CLI::App app(
      "Inspect layer-2 interface messages: take them from this machine, show them next to their"
      "\nnative records, and report what a conversion loses.");
  app.name("zorl2-inspect");
  // The commands inherit it.
  app.formatter(HelpFormatter());
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.set_version_flag("--version", "zorl2-inspect " ZORL2_VERSION, "Print the version and exit");
  app.require_subcommand(1);
  app.footer(
      "\"zorl2-inspect COMMAND --help\" describes a command and has an example of it. Exit status: "
      "0 done, 1 differences or losses found, 2 error.\n\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect show -");
  int status = kExitOk;
  AddSnapshotCommand(app, status);
  AddShowCommand(app, status);
  AddRoundtripCommand(app, status);
  AddTypesCommand(app, status);
  AddEncodeCommand(app, status);
  AddDiffCommand(app, status);
  AddExplainCommand(app, status);
  AddStatsCommand(app, status);
  AddSummaryCommand(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& success) {
    std::ostringstream text;
    app.exit(success, text, text);
    Output output;
    output.Write(text.str());
    output.Finish();
    return kExitOk;
  } catch (const CLI::ParseError& error) {
    if (argc > 1 && *argv[1] != '-' && !IsCommand(app, argv[1])) {
      throw Error(fmt::format("\"{}\"", argv[1]), "no command", Suggestion(app, argv[1]));
    }
    PrintError(fmt::format("{} (see --help)", error.what()));
    return kExitError;
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  // The tool reports what the runtime would log, with the name of the file.
  google::protobuf::SetLogHandler(nullptr);
  try {
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    // Needs no memory.
    std::fputs("zorl2-inspect: out of memory\n", stderr);
  } catch (const std::exception& error) {
    zorl2_inspect::PrintError(error.what());
  }
  return zorl2_inspect::kExitError;
}
