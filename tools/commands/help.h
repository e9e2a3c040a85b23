// The layout of --help.
#pragma once

#include <CLI/FormatterFwd.hpp>
#include <memory>

namespace zorl2_inspect {

// Fits help into 80 columns: descriptions are wrapped, and footers too except indented lines. The
// default of an option is after its description.
std::shared_ptr<CLI::FormatterBase> HelpFormatter();

}  // namespace zorl2_inspect
