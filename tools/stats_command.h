#pragma once

#include <CLI/App.hpp>

namespace zorl2_inspect {

// Adds "stats"; when it is chosen it runs and leaves its exit status.
void AddStatsCommand(CLI::App& app, int& status);

}  // namespace zorl2_inspect
