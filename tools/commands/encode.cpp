#include <fmt/format.h>
#include <google/protobuf/descriptor.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/input/files.h"
#include "tools/input/message_text.h"
#include "tools/model/message_forms.h"
#include "tools/text/error.h"
#include "tools/text/output.h"

namespace zorl2_inspect {
namespace {

struct EncodeArguments {
  std::vector<std::string> files;
  std::string type;
  std::string form;
  std::string output = "-";
  bool delimited = false;
  bool force = false;
};

using google::protobuf::Descriptor;
using google::protobuf::Message;
using Messages = std::vector<std::unique_ptr<Message>>;

void Append(const std::string& file, const EncodeArguments& arguments, Messages* messages) {
  const std::string content = ReadInput(file);
  const std::string_view text = WithoutMark(content);
  const bool json = arguments.form.empty() ? LooksLikeJson(text) : arguments.form == "json";
  const MessageText input{InputName(file), text, json};
  const Descriptor* const type =
      arguments.type.empty()
          ? ReportInferred(input.file, json ? InputForm::kJson : InputForm::kText,
                           InferTypeOfText(input))
          : TypeNamed(arguments.type);
  for (auto& message : ReadMessages(input, *type)) messages->push_back(std::move(message));
}

int RunEncode(const EncodeArguments& arguments) {
  Messages messages;
  for (const std::string& file : arguments.files) Append(file, arguments, &messages);
  if (messages.size() != 1 && !arguments.delimited) {
    throw Error(InputName(arguments.files.front()), fmt::format("{} messages", messages.size()),
                "one message; --delimited writes several");
  }
  // All of the input has been read without an error before the output is opened.
  Output output(arguments.output);
  output.RejectTerminal(arguments.force);
  MessageWriter writer(output, MessageForm::kWire, arguments.delimited);
  for (const auto& message : messages) writer.Write(*message);
  output.Finish();
  return kExitOk;
}

}  // namespace

void AddEncodeCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<EncodeArguments>();
  CLI::App* command = app.add_subcommand(
      "encode", "Turn JSON or protobuf text into wire bytes, or several messages into a stream");
  command->add_option("FILE", arguments->files, "Read these files; - for standard input")
      ->required()
      ->type_name("");
  AddTypeOption(*command, arguments->type);
  command->add_option("--input", arguments->form, "Set the form of the input; inferred if omitted")
      ->check(CLI::IsMember({"json", "text"}))
      ->type_name("FORM");
  command->add_flag("--delimited", arguments->delimited,
                    "Write a length-prefixed stream; JSON may then contain several messages, in an "
                    "array or one after the other. By default there is one message");
  command->add_option("-o,--output", arguments->output, "Write to this file; - for standard output")
      ->capture_default_str()
      ->type_name("FILE");
  AddForceOption(*command, arguments->force);
  command->footer(
      "Writes nothing unless all of the input is good.\n\n"
      "Exit status: 0 done, 2 the input cannot be read or is no message.\n\n"
      "Example:\n"
      "  echo '{\"value\": [0, 0, 0, 7]}' | zorl2-inspect encode --type Zorid - | xxd");
  command->callback([arguments, &status] { status = RunEncode(*arguments); });
}

}  // namespace zorl2_inspect
