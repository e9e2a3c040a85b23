#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <memory>
#include <optional>
#include <string>

#include "check/check.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/input/message_reader.h"
#include "tools/model/check_text.h"
#include "tools/model/entry_row.h"
#include "tools/model/findings.h"
#include "tools/model/message_forms.h"
#include "tools/model/message_types.h"
#include "tools/model/unknown_fields.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/text/quoting.h"
#include "tools/views/message_view.h"
#include "tools/views/stream_table.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;

struct ShowArguments {
  InputOptions input;
  std::string output = "table";
  bool json = false;
  bool strict = false;
  bool force = false;
  std::string colour = "auto";
};

class Show {
 public:
  explicit Show(const ShowArguments& arguments)
      : form_(arguments.json ? "json" : arguments.output),
        palette_(PaletteFor(arguments.colour)),
        rows_(output_, palette_),
        input_(WithHooks(arguments)),
        reader_(input_, arguments.strict, [this] { Flush(); }) {
    if (form_ == "wire") output_.RejectTerminal(arguments.force);
    if (form_ != "table" && form_ != "native") {
      writer_.emplace(output_, FormNamed(form_), input_.delimited());
    }
  }

  int Run() {
    const std::unique_ptr<Message> message = NewMessage(input_.type());
    Record record;
    while (reader_.Next(record, *message)) {
      const bool converts = Converts(zorl2::check::Check(*message));
      if (strict_ && !converts) Report(record, *message);
      ShowRecord(*message, record);
      if (!converts) Report(record, *message);
    }
    rows_.Finish();
    output_.Finish();
    return reader_.status();
  }

 private:
  InputOptions WithHooks(const ShowArguments& arguments) {
    strict_ = arguments.strict;
    InputOptions options = arguments.input;
    options.strict = arguments.strict;
    options.before_wait = [this] { Flush(); };
    return options;
  }

  void Flush() {
    rows_.Flush();
    output_.Flush();
  }

  void Report(const Record& record, const Message& message) {
    reader_.Report(record, FindAll(message).rejections);
  }

  void ShowRecord(const Message& message, const Record& record) {
    if (writer_) {
      writer_->Write(message);
      if (form_ == "json") NoteUnknown(message);
    } else if (form_ == "native") {
      if (input_.delimited()) output_.Print("# record {}\n", record.number);
      PrintNative(message, output_);
    } else if (input_.delimited() &&
               message.GetDescriptor() == zorl2::protobuf::IntfEntry::descriptor()) {
      const auto& entry = static_cast<const zorl2::protobuf::IntfEntry&>(message);
      rows_.Add(record.number, MakeEntryRow(entry));
    } else {
      if (input_.delimited() && record.number > 1) output_.Write('\n');
      PrintMessage(message, Title(record), output_, palette_);
    }
  }

  void NoteUnknown(const Message& message) const {
    const std::size_t unknown = CountUnknown(message);
    if (unknown == 0) return;
    PrintNote(
        fmt::format("{}: {} unknown fields have no JSON form and are left out (--output table "
                    "shows them)",
                    input_.name(), unknown));
  }

  std::string Title(const Record& record) const {
    std::string title = fmt::format("{} from {}", input_.type().name(), Printable(input_.name()));
    if (input_.delimited()) {
      title += fmt::format(", record {}, offset {:#x}", record.number, record.offset);
    }
    return title;
  }

  std::string form_;
  Palette palette_;
  Output output_;
  StreamTable rows_;
  bool strict_ = false;
  // Reads while it is made, and flushes the above before it waits.
  Input input_;
  MessageReader reader_;
  std::optional<MessageWriter> writer_;
};

}  // namespace

void AddShowCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ShowArguments>();
  CLI::App* command =
      app.add_subcommand("show", "Show messages next to their native records, or in another form");
  AddInputOptions(*command, arguments->input);
  AddFollowOption(*command, arguments->input);
  AddStrictOption(*command, arguments->strict);
  command
      ->add_option("--output", arguments->output,
                   "Set the form: table, json, text, native (the native records), wire or hex")
      ->check(CLI::IsMember({"table", "json", "text", "native", "wire", "hex"}))
      ->capture_default_str()
      ->type_name("FORM");
  command->add_flag("--json", arguments->json, "Print JSON, like --output json");
  AddForceOption(*command, arguments->force);
  AddColourOption(*command, arguments->colour);
  command->footer(
      "A value that the native record does not keep has \"!\" after it, a value because of which "
      "the\n"
      "conversion fails has \"!!\". Exit status: 0 done, 1 a message is damaged or does not "
      "convert,\n"
      "2 the input cannot be read.\n\n"
      "Examples:\n"
      "  zorl2-inspect snapshot | zorl2-inspect show -\n"
      "  echo '0a 04 00 00 00 07' | zorl2-inspect show --type Zorid -");
  command->callback([arguments, &status] { status = Show(*arguments).Run(); });
}

}  // namespace zorl2_inspect
