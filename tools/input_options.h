// The options that say what a subcommand reads.
#pragma once

#include <CLI/App.hpp>

#include "tools/input.h"

namespace zorl2_inspect {

// FILE, and the options below.
void AddInputOptions(CLI::App& command, InputOptions& options);
// --type, --input and --delimited.
void AddReadingOptions(CLI::App& command, InputOptions& options);

}  // namespace zorl2_inspect
