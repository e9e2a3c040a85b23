#include "tools/encode_command.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>

#include <CLI/Validators.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/error.h"
#include "tools/input.h"
#include "tools/message_text.h"
#include "tools/output.h"

namespace zorl2_inspect {
namespace {

struct EncodeArguments {
  std::vector<std::string> files;
  std::string type;
  std::string form;
  std::string output = "-";
  bool delimited = false;
};

using google::protobuf::Descriptor;
using google::protobuf::Message;
using Messages = std::vector<std::unique_ptr<Message>>;

void Append(const std::string& file, const EncodeArguments& options, Messages* messages) {
  const std::string content = ReadInput(file);
  const std::string_view text = WithoutMark(content);
  const bool json = options.form.empty() ? LooksLikeJson(text) : options.form == "json";
  const MessageText input{InputName(file), text, json};
  const Descriptor* const type =
      options.type.empty() ? TypeGuessed(input.file, json ? InputForm::kJson : InputForm::kText,
                                         GuessTypeOfText(input))
                           : TypeNamed(file, options.type);
  for (auto& message : ReadMessages(input, *type)) messages->push_back(std::move(message));
}

int EncodeCommand(const EncodeArguments& options) {
  Messages messages;
  for (const std::string& file : options.files) Append(file, options, &messages);
  if (messages.size() != 1 && !options.delimited) {
    throw InputError(InputName(options.files.front()), "",
                     fmt::format("expected one message, found {} (--delimited writes several)",
                                 messages.size()));
  }
  // Nothing is written before all of the input is known to be good.
  Output output(options.output);
  for (const auto& message : messages) {
    output.Write(MessageIn(MessageForm::kWire, *message, options.delimited));
  }
  output.Finish();
  return kExitOk;
}

}  // namespace

void AddEncodeCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<EncodeArguments>();
  CLI::App* command = app.add_subcommand(
      "encode", "Turn JSON or protobuf text into wire bytes, or several messages into a stream");
  command->add_option("FILE", options->files, "The files to read; - for standard input")
      ->required()
      ->type_name("");
  command->add_option("--type", options->type, "The message type; guessed when left out")
      ->type_name("NAME");
  command->add_option("--input", options->form, "json or text; guessed when left out")
      ->check(CLI::IsMember({"json", "text"}))
      ->type_name("FORM");
  command->add_flag("--delimited", options->delimited,
                    "Write each message behind its length; JSON may then hold an array of "
                    "messages, or several one after the other");
  command->add_option("-o,--output", options->output, "The file to write; - for standard output")
      ->type_name("FILE");
  command->footer(
      "Example:\n"
      "  echo '{\"value\": [0, 0, 0, 7]}' | zorl2-inspect encode --type Zorid - | xxd");
  command->callback([options, &status] { status = EncodeCommand(*options); });
}

}  // namespace zorl2_inspect
