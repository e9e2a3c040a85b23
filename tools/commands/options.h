// Options that several subcommands have.
#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "tools/input/input.h"
#include "tools/model/filter.h"
#include "tools/text/colours.h"

namespace zorl2_inspect {

// Adds FILE and the options of AddReadingOptions().
void AddInputOptions(CLI::App& command, InputOptions& options);
// --type, --input and --delimited.
void AddReadingOptions(CLI::App& command, InputOptions& options);
// --type.
void AddTypeOption(CLI::App& command, std::string& type);
// --strict.
void AddStrictOption(CLI::App& command, bool& strict);
// --follow, which also catches Ctrl-C.
void AddFollowOption(CLI::App& command, InputOptions& options);
// --force.
void AddForceOption(CLI::App& command, bool& force);
// --where, which may be repeated.
void AddWhereOption(CLI::App& command, std::vector<std::string>& conditions);
// Reports on standard error that nothing was selected, if that is so.
void NoteNothingSelected(const std::string& name, const Filter& filter);
// --color.
void AddColourOption(CLI::App& command, std::string& when);

// The colours for standard output.
Palette PaletteFor(const std::string& when);

}  // namespace zorl2_inspect
