#pragma once

#include <CLI/App.hpp>

namespace zorl2_inspect {

// Adds "explain"; when it is chosen it runs and leaves its exit status.
void AddExplainCommand(CLI::App& app, int& status);

}  // namespace zorl2_inspect
