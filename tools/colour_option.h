// The option that overrules what the terminal and the environment say about colours.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <string>

namespace zorl2_inspect {

inline void AddColourOption(CLI::App& command, std::string& when) {
  command.add_option("--color", when, "auto, always or never; auto respects NO_COLOR")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str()
      ->type_name("WHEN");
}

}  // namespace zorl2_inspect
