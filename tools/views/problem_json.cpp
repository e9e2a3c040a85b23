#include "tools/views/problem_json.h"

namespace zorl2_inspect {

void WriteProblem(std::string_view name, const std::optional<Problem>& problem, JsonWriter& json) {
  json.Key(name);
  if (!problem) return json.Null();
  json.BeginObject();
  json.MemberOrNull("record", problem->record == 0 ? std::nullopt : std::optional(problem->record));
  json.MemberOrNull("offset", problem->offset);
  json.MemberOrNull("line", problem->place ? std::optional(problem->place->line) : std::nullopt);
  json.MemberOrNull("column",
                    problem->place ? std::optional(problem->place->column) : std::nullopt);
  json.MemberOrNull("path", problem->path);
  json.Member("found", problem->found);
  json.MemberOrNull("expected", problem->expected);
  json.MemberOrNull("rule", problem->rule_name);
  json.EndObject();
}

}  // namespace zorl2_inspect
