// Where things stand in a JSON text: the runtime's parser names a field path at best, a person
// looks for a line and a column.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

struct JsonError {
  std::size_t offset = 0;
  // What was expected and what stood there.
  std::string problem;
};

// How deep objects and arrays may nest.
inline constexpr int kJsonDepthLimit = 100;

// The first place where the text is not JSON; nothing when it is.
std::optional<JsonError> CheckJson(std::string_view text);

// Where the value of a path such as intfEntry[3].zorid.value[0] stands, or the nearest value around
// it. The text is JSON.
std::size_t FindJsonPath(std::string_view text, std::string_view path);

// The names in the outermost object. The text is JSON.
std::vector<std::string> JsonNames(std::string_view text);

}  // namespace zorl2_inspect
