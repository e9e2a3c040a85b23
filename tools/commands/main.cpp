// zorl2-inspect: shows messages of package zorl2.protobuf and what their conversion does.
#include <fmt/format.h>
#include <google/protobuf/stubs/logging.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <new>

#include "tools/commands/commands.h"
#include "tools/text/error.h"

namespace {

// Each subcommand runs from its callback and leaves its exit status here.
int Run(int argc, char** argv) {
  using namespace zorl2_inspect;
  CLI::App app(
      "Inspect layer-2 interface messages: take them from this machine, show them next to their"
      "\nnative records, and report what a conversion loses.");
  app.name("zorl2-inspect");
  app.set_version_flag("--version", "zorl2-inspect " ZORL2_VERSION);
  app.require_subcommand(1);
  app.footer(
      "\"zorl2-inspect COMMAND --help\" has an example of each. Exit status: 0 done, 1 "
      "differences or\nlosses found, 2 error.");
  int status = kExitOk;
  AddSnapshotCommand(app, status);
  AddShowCommand(app, status);
  AddRoundtripCommand(app, status);
  AddTypesCommand(app, status);
  AddEncodeCommand(app, status);
  AddDiffCommand(app, status);
  AddExplainCommand(app, status);
  AddStatsCommand(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& success) {
    return app.exit(success);
  } catch (const CLI::ParseError& error) {
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
