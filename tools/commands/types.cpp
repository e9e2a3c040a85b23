#include <fmt/format.h>

#include <memory>
#include <string>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/views/types_view.h"

namespace zorl2_inspect {
namespace {

struct TypesArguments {
  std::string name;
  bool json = false;
  std::string colour = "auto";
};

int RunTypes(const TypesArguments& arguments) {
  Output output;
  const bool found = arguments.json
                         ? PrintTypesAsJson(arguments.name, output)
                         : PrintTypes(arguments.name, PaletteFor(arguments.colour), output);
  if (!found) {
    throw Error("NAME", fmt::format("\"{}\"", arguments.name),
                "the name of a message or enumeration");
  }
  output.Finish();
  return kExitOk;
}

}  // namespace

void AddTypesCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<TypesArguments>();
  CLI::App* command =
      app.add_subcommand("types", "List messages, enumerations and speeds with their native side");
  command->add_option("NAME", arguments->name, "Show one message or enumeration; all if omitted")
      ->type_name("");
  command->add_flag("--json", arguments->json, "Print JSON; a table by default");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Lists every message with its fields and its native record, every enumeration with its "
      "numbers on the wire and in native records, and the speed table. A field's remark is what "
      "its conversion does with unusual values.\n\n"
      "Exit status: 0 done, 2 there is no such name.\n\n"
      "Examples:\n"
      "  zorl2-inspect types\n"
      "  zorl2-inspect types ProtocolType");
  command->callback([arguments, &status] { status = RunTypes(*arguments); });
}

}  // namespace zorl2_inspect
