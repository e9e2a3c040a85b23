#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/check.h"
#include "tools/commands/arguments.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/input/message_reader.h"
#include "tools/model/check_text.h"
#include "tools/model/columns.h"
#include "tools/model/entry_row.h"
#include "tools/model/filter.h"
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
  std::vector<std::string> files;
  InputOptions input;
  std::string output = "table";
  bool json = false;
  bool strict = false;
  bool force = false;
  std::vector<std::string> where;
  std::string columns;
  std::string colour = "auto";
};

class Show {
 public:
  explicit Show(const ShowArguments& arguments)
      : form_(arguments.json ? "json" : arguments.output),
        palette_(PaletteFor(arguments.colour)),
        rows_(output_, palette_),
        input_(WithHooks(arguments)),
        reader_(input_, arguments.strict, [this] { Flush(); }),
        message_(NewMessage(input_.type())),
        filter_(input_.type(), arguments.where) {
    if (form_ == "wire") output_.RejectTerminal(arguments.force);
    if (!arguments.columns.empty()) {
      if (form_ != "table") throw Error("--columns", "--output " + form_, "--output table");
      columns_.emplace(input_.type(), arguments.columns);
      rows_.Replace(ColumnsTable(*columns_));
    }
    if (form_ != "table" && form_ != "native") {
      writer_.emplace(output_, FormNamed(form_), input_.delimited());
    }
  }

  int Run() {
    reader_.OnDamage([this](const Record& damaged, const Problem&) { ShowPart(damaged); });
    Record record;
    while (reader_.Next(record, *message_)) {
      if (!filter_.Apply(message_.get())) continue;
      const bool converts = Converts(zorl2::check::Check(*message_));
      if (strict_ && !converts) Report(record, *message_);
      ShowRecord(*message_, record);
      if (!converts) Report(record, *message_);
    }
    rows_.Finish();
    output_.Finish();
    NoteNothingSelected(input_.name(), filter_);
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
    std::vector<zorl2::check::Verdict> rejections = FindAll(message).rejections;
    for (zorl2::check::Verdict& verdict : rejections) {
      verdict.field = filter_.PathBefore(verdict.field);
    }
    reader_.Report(record, rejections);
    // A record that is one row has its reason there.
    if (input_.delimited() && columns_ && columns_->of_elements()) {
      rows_.AddRejections(record.number, rejections);
    }
  }

  void ShowRecord(const Message& message, const Record& record) {
    if (writer_) {
      writer_->Write(message);
      if (form_ == "json") NoteUnknown(message);
    } else if (form_ == "native") {
      if (input_.delimited()) output_.Print("# record {}\n", record.number);
      PrintNative(message, output_);
    } else if (columns_) {
      ShowColumns(message, record);
    } else if (input_.delimited() &&
               message.GetDescriptor() == zorl2::protobuf::IntfEntry::descriptor()) {
      const auto& entry = static_cast<const zorl2::protobuf::IntfEntry&>(message);
      const EntryRow row = MakeEntryRow(entry);
      rows_.Add(row);
      rows_.AddNotKept(record.number, message, row);
    } else {
      if (shown_) output_.Write('\n');
      PrintMessage(message, Title(record), filter_, output_, palette_);
      shown_ = true;
    }
  }

  // What the parser has read of a single message before the damage. A program would take it for the
  // whole message, so only the table has it.
  void ShowPart(const Record& record) {
    std::vector<const google::protobuf::FieldDescriptor*> fields;
    message_->GetReflection()->ListFields(*message_, &fields);
    if (input_.delimited() || strict_ || form_ != "table" || fields.empty()) return;
    if (!filter_.Apply(message_.get())) return;
    is_part_ = true;
    ShowRecord(*message_, record);
    output_.Flush();
  }

  void ShowColumns(const Message& message, const Record& record) {
    const std::vector<EntryRow> rows = columns_->Rows(message);
    if (input_.delimited()) {
      for (const EntryRow& row : rows) rows_.Add(row);
      rows_.AddNotKept(record.number, message);
      return;
    }
    std::string title = Title(record);
    if (!filter_.empty()) {
      title += fmt::format(": {} of {} elements", filter_.selected(), filter_.last_seen());
    }
    output_.Print("{}\n\n", palette_(Colour::kBold, title));
    PrintRows(rows, ColumnsTable(*columns_), output_, palette_);
    PrintNotKept(message, filter_, output_, palette_);
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
    if (is_part_) title += ", up to the damage";
    return title;
  }

  std::string form_;
  Palette palette_;
  Output output_;
  StreamTable rows_;
  bool strict_ = false;
  // The constructor reads, and flushes the members above before it waits.
  Input input_;
  MessageReader reader_;
  std::optional<MessageWriter> writer_;
  std::unique_ptr<Message> message_;
  Filter filter_;
  std::optional<Columns> columns_;
  bool shown_ = false;
  bool is_part_ = false;
};

}  // namespace

void AddShowCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ShowArguments>();
  CLI::App* command =
      app.add_subcommand("show", "Show messages next to their native records, or in another form");
  command
      ->add_option("FILE", arguments->files,
                   "Read these files, one after the other; - for standard input")
      ->required()
      ->type_name("");
  AddReadingOptions(*command, arguments->input);
  AddFollowOption(*command, arguments->input);
  AddStrictOption(*command, arguments->strict);
  command
      ->add_option("--output", arguments->output,
                   "Set the form of the output; native are the native records")
      ->check(OneOf({"table", "json", "text", "native", "wire", "hex"}))
      ->capture_default_str()
      ->type_name("FORM");
  command->add_flag("--json", arguments->json,
                    "Print JSON, like --output json; a table by default");
  AddForceOption(*command, arguments->force);
  AddWhereOption(*command, arguments->where);
  command
      ->add_option("--columns", arguments->columns,
                   "Set the columns of the table: short names or paths, separated by commas; the\n"
                   "usual ones if omitted")
      ->type_name("LIST");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "FIELD is a path such as statusInfo.operationalStatus, or a short name: id, parent, name, "
      "type, category, admin, oper, link, speed, mtu, duplex, shut (the protocols that shut a "
      "port), block (those that block it). A repeated field needs one value that fits. != is true "
      "where = is false. An empty VALUE means no value: 'shut!=' selects the ports that are shut. "
      "Names of enumerations may be shortened: admin=up.\n\n"
      "A value that the native record does not keep has \"!\" after it, a value because of which "
      "the conversion fails has \"!!\".\n\n"
      "Exit status: 0 done, also if nothing is selected, 1 a message is damaged or does not "
      "convert, 2 the input cannot be read.\n\n"
      "Examples:\n"
      "  zorl2-inspect snapshot | zorl2-inspect show -\n"
      "  zorl2-inspect snapshot | zorl2-inspect show --where oper=up --columns id,mtu -\n"
      "  echo '0a 04 00 00 00 07' | zorl2-inspect show --type Zorid -");
  command->callback([arguments, &status] {
    for (const std::string& file : arguments->files) {
      arguments->input.file = file;
      try {
        status = std::max(status, Show(*arguments).Run());
      } catch (const Error& error) {
        // The other files may be good.
        if (arguments->files.size() == 1 || arguments->strict) throw;
        PrintError(error.what());
        status = kExitError;
      }
    }
  });
}

}  // namespace zorl2_inspect
