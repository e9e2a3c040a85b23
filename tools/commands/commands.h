// The subcommands. Each function adds one; if it is chosen, it runs and sets the exit status.
#pragma once

#include <CLI/App.hpp>

namespace zorl2_inspect {

void AddSnapshotCommand(CLI::App& app, int& status);
void AddShowCommand(CLI::App& app, int& status);
void AddRoundtripCommand(CLI::App& app, int& status);
void AddTypesCommand(CLI::App& app, int& status);
void AddEncodeCommand(CLI::App& app, int& status);
void AddDiffCommand(CLI::App& app, int& status);
void AddExplainCommand(CLI::App& app, int& status);
void AddStatsCommand(CLI::App& app, int& status);
void AddSummaryCommand(CLI::App& app, int& status);

}  // namespace zorl2_inspect
