#include "tools/input_options.h"

#include <CLI/Validators.hpp>
#include <map>
#include <string>

namespace zorl2_inspect {

void AddReadingOptions(CLI::App& command, InputOptions& options) {
  command.add_option("--type", options.type, "The message type; guessed when left out")
      ->type_name("NAME");
  static const std::map<std::string, InputForm> forms = {{"wire", InputForm::kWire},
                                                         {"hex", InputForm::kHex},
                                                         {"json", InputForm::kJson},
                                                         {"text", InputForm::kText}};
  command
      .add_option_function<std::string>(
          "--input", [&options](const std::string& name) { options.form = forms.at(name); },
          "What the input holds: wire, hex, json or text; guessed when left out")
      ->check(CLI::IsMember({"wire", "hex", "json", "text"}))
      ->type_name("FORM");
  command.add_flag("--delimited", options.delimited,
                   "A stream of messages, each behind its length as a varint");
}

void AddInputOptions(CLI::App& command, InputOptions& options) {
  command.add_option("FILE", options.file, "The file to read; - for standard input")
      ->required()
      ->type_name("");
  AddReadingOptions(command, options);
}

}  // namespace zorl2_inspect
