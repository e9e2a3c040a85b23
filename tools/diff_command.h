#pragma once

#include <CLI/App.hpp>

namespace zorl2_inspect {

// Adds "diff"; when it is chosen it runs and leaves its exit status.
void AddDiffCommand(CLI::App& app, int& status);

}  // namespace zorl2_inspect
