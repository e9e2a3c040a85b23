#pragma once

#include <CLI/App.hpp>

namespace zorl2_inspect {

// Adds "types"; when it is chosen it runs and leaves its exit status.
void AddTypesCommand(CLI::App& app, int& status);

}  // namespace zorl2_inspect
