#include "tools/types_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "tools/colour_option.h"
#include "tools/colours.h"
#include "tools/error.h"
#include "tools/output_check.h"
#include "tools/type_tables.h"

namespace zorl2_inspect {
namespace {

struct TypesArguments {
  std::string name;
  bool json = false;
  std::string colour = "auto";
};

}  // namespace

void AddTypesCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<TypesArguments>();
  CLI::App* command =
      app.add_subcommand("types", "List messages, enumerations and speeds with their native side");
  command->add_option("NAME", options->name, "One message or enumeration; all when left out")
      ->type_name("");
  command->add_flag("--json", options->json, "Print JSON");
  AddColourOption(*command, options->colour);
  command->footer(
      "Every message with its fields and its native record, every enumeration with the numbers of\n"
      "the wire and of the native side, and the speed table.\n\n"
      "Examples:\n"
      "  zorl2-inspect types\n"
      "  zorl2-inspect types ProtocolType");
  command->callback([options, &status] {
    const Palette paint(UseColours(options->colour, STDOUT_FILENO));
    const bool found = WithOutput([&] {
      return options->json ? PrintTypesAsJson(options->name, stdout)
                           : PrintTypes(options->name, paint, stdout);
    });
    if (found) return;
    PrintError(
        fmt::format("expected the name of a message or enumeration, found \"{}\"", options->name));
    status = kExitError;
  });
}

}  // namespace zorl2_inspect
