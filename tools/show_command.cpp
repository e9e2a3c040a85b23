#include "tools/show_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <CLI/Validators.hpp>
#include <map>
#include <memory>
#include <string>

#include "tools/colour_option.h"
#include "tools/colours.h"
#include "tools/conversion.h"
#include "tools/error.h"
#include "tools/field_text.h"
#include "tools/input_options.h"
#include "tools/message_types.h"
#include "tools/output.h"
#include "tools/show_table.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;

struct ShowArguments {
  InputOptions input;
  std::string output = "table";
  bool json = false;
  std::string colour = "auto";
};

// Entries of a stream are one table; a heading stands above so many of them.
constexpr std::size_t kRowsBelowHeading = 1000;

class Shower {
 public:
  explicit Shower(const ShowArguments& options)
      : input_(options.input),
        form_(options.json ? "json" : options.output),
        palette_(UseColours(options.colour, STDOUT_FILENO)),
        output_("-"),
        entries_(EntryTable()) {}

  int Run() {
    const std::unique_ptr<Message> message = NewMessage(input_.type());
    Record record;
    while (input_.Next(record)) {
      input_.Parse(record, *message);
      if (const auto refusal = FindRefusal(*message)) {
        input_.Fail(record, refusal->path, refusal->problem);
      }
      Show(*message, record);
    }
    if (!entries_.empty()) entries_.Print(output_.stream(), palette_);
    output_.Finish();
    return kExitOk;
  }

 private:
  void Show(const Message& message, const Record& record) {
    static const std::map<std::string, MessageForm> forms = {{"json", MessageForm::kJson},
                                                             {"text", MessageForm::kText},
                                                             {"wire", MessageForm::kWire},
                                                             {"hex", MessageForm::kHex}};
    const auto form = forms.find(form_);
    if (form != forms.end()) {
      output_.Write(MessageIn(form->second, message, input_.delimited()));
      if (form_ != "json") return;
      const std::size_t unknown = UnknownValues(message).size();
      if (unknown > 0) {
        PrintNote(
            fmt::format("{}: {} unknown fields have no JSON form and are left out (--output "
                        "table shows them)",
                        input_.name(), unknown));
      }
      return;
    }
    const bool entry = message.GetDescriptor() == zorl2::protobuf::IntfEntry::descriptor();
    if (form_ == "native") {
      if (input_.delimited()) output_.Write(fmt::format("# record {}\n", record.number));
      output_.Write(NativeText(message));
    } else if (entry && input_.delimited()) {
      AddEntry(static_cast<const zorl2::protobuf::IntfEntry&>(message), entries_);
      if (entries_.size() < kRowsBelowHeading) return;
      entries_.Print(output_.stream(), palette_);
      entries_.Clear();
    } else {
      if (input_.delimited() && record.number > 1) output_.Write("\n");
      PrintMessage(message, Title(record), output_.stream(), palette_);
    }
  }

  std::string Title(const Record& record) const {
    if (!input_.delimited()) return fmt::format("{} from {}", input_.type().name(), input_.name());
    return fmt::format("{} from {}, record {} at offset {}", input_.type().name(), input_.name(),
                       record.number, record.offset);
  }

  Input input_;
  std::string form_;
  Palette palette_;
  Output output_;
  Table entries_;
};

}  // namespace

void AddShowCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ShowArguments>();
  CLI::App* command = app.add_subcommand(
      "show", "Shows messages for a person, beside their native records, or in another form");
  AddInputOptions(*command, options->input);
  command
      ->add_option("--output", options->output,
                   "table, json, text, native (the native records), wire or hex")
      ->check(CLI::IsMember({"table", "json", "text", "native", "wire", "hex"}))
      ->capture_default_str()
      ->type_name("FORM");
  command->add_flag("--json", options->json, "The same as --output json");
  AddColourOption(*command, options->colour);
  command->footer(
      "Examples:\n"
      "  zorl2-inspect snapshot | zorl2-inspect show -\n"
      "  echo '0a 04 00 00 00 07' | zorl2-inspect show --type Zorid -");
  command->callback([options, &status] { status = Shower(*options).Run(); });
}

}  // namespace zorl2_inspect
