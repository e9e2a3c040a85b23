// The name that somebody meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// The name with the fewest typing errors, whatever their case. A path also counts by its last part.
// Empty if there are no names.
std::string Nearest(std::string_view written, const std::vector<std::string>& names);

}  // namespace zorl2_inspect
