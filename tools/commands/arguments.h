// What the command line may contain, and what is wrong with it.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace zorl2_inspect {

// Accepts one of these values.
CLI::Validator OneOf(const std::vector<std::string>& values);

// Accepts a decimal number in these bounds.
CLI::Validator WholeNumber(std::size_t least = 0,
                           std::size_t most = std::numeric_limits<std::size_t>::max());

// One line with the command, what was found and what was expected.
std::string ArgumentErrorText(const CLI::App& app, const CLI::ParseError& error);

}  // namespace zorl2_inspect
