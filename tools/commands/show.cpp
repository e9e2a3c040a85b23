#include <fmt/format.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/check.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/check_text.h"
#include "tools/model/columns.h"
#include "tools/model/entry_row.h"
#include "tools/model/filter.h"
#include "tools/model/message_forms.h"
#include "tools/model/message_types.h"
#include "tools/model/unknown_fields.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/views/entry_table.h"
#include "tools/views/message_view.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;

struct ShowArguments {
  InputOptions input;
  std::string output = "table";
  bool json = false;
  std::vector<std::string> where;
  std::string columns;
  std::string colour = "auto";
};

// The entries of a stream are one table; its heading is repeated after so many rows.
constexpr std::size_t kRowsBelowHeading = 1000;

class Show {
 public:
  explicit Show(const ShowArguments& arguments)
      : input_(arguments.input),
        form_(arguments.json ? "json" : arguments.output),
        palette_(PaletteFor(arguments.colour)),
        filter_(input_.type(), arguments.where),
        rows_(EntryTable()) {
    if (!arguments.columns.empty()) {
      if (form_ != "table") throw Error("--columns", "--output " + form_, "--output table");
      columns_.emplace(input_.type(), arguments.columns);
      rows_ = Table(columns_->Titles(), Table::Empty::kPrinted);
    }
    if (form_ != "table" && form_ != "native") {
      writer_.emplace(output_, FormNamed(form_), input_.delimited());
    }
  }

  int Run() {
    const std::unique_ptr<Message> message = NewMessage(input_.type());
    Record record;
    while (input_.Next(record)) {
      input_.Read(record, *message);
      const zorl2::check::Verdict verdict = zorl2::check::Check(*message);
      if (!Converts(verdict)) input_.Fail(input_.Locate(record, verdict));
      if (filter_.Apply(message.get())) ShowRecord(*message, record);
    }
    if (!rows_.empty()) rows_.Print(output_, palette_);
    output_.Finish();
    NoteNothingSelected(input_.name(), filter_);
    return kExitOk;
  }

 private:
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
      AddRow(MakeEntryRow(static_cast<const zorl2::protobuf::IntfEntry&>(message)), rows_);
      if (rows_.size() < kRowsBelowHeading) return;
      PrintRows();
    } else {
      if (shown_) output_.Write('\n');
      PrintMessage(message, Title(record), filter_, output_, palette_);
      shown_ = true;
    }
  }

  void ShowColumns(const Message& message, const Record& record) {
    for (const auto& row : columns_->Rows(message)) AddRow(row, rows_);
    if (input_.delimited()) {
      if (rows_.size() >= kRowsBelowHeading) PrintRows();
      return;
    }
    std::string title = Title(record);
    if (!filter_.empty()) {
      title += fmt::format(": {} of {} elements", filter_.selected(), filter_.last_seen());
    }
    output_.Print("{}\n\n", palette_(Colour::kBold, title));
    if (!rows_.empty()) PrintRows();
    PrintNotKept(message, filter_, output_, palette_);
  }

  void PrintRows() {
    rows_.Print(output_, palette_);
    rows_.Clear();
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
    if (!input_.delimited()) return fmt::format("{} from {}", input_.type().name(), input_.name());
    return fmt::format("{} from {}, record {}, offset {:#x}", input_.type().name(), input_.name(),
                       record.number, record.offset);
  }

  Input input_;
  std::string form_;
  Palette palette_;
  Output output_;
  std::optional<MessageWriter> writer_;
  Filter filter_;
  std::optional<Columns> columns_;
  bool shown_ = false;
  Table rows_;
};

}  // namespace

void AddShowCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ShowArguments>();
  CLI::App* command =
      app.add_subcommand("show", "Show messages next to their native records, or in another form");
  AddInputOptions(*command, arguments->input);
  command
      ->add_option("--output", arguments->output,
                   "Set the form: table, json, text, native (the native records), wire or hex")
      ->check(CLI::IsMember({"table", "json", "text", "native", "wire", "hex"}))
      ->capture_default_str()
      ->type_name("FORM");
  command->add_flag("--json", arguments->json, "Print JSON, like --output json");
  AddWhereOption(*command, arguments->where);
  command
      ->add_option("--columns", arguments->columns,
                   "Set the columns of the table: short names or paths, separated by commas; the\n"
                   "usual ones if omitted")
      ->type_name("LIST");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "FIELD is a path such as statusInfo.operationalStatus, or a short name: id, parent, name, "
      "type,\n"
      "category, admin, oper, link, speed, mtu, duplex, shut (the protocols that shut a port), "
      "block\n"
      "(those that block it). A repeated field needs one value that fits. != is true where = is\n"
      "false. An empty VALUE stands for no value: 'shut!=' selects the ports that are shut. Names "
      "of\n"
      "enumerations may be shortened: admin=up. Exit status 0 also if nothing is selected.\n\n"
      "Examples:\n"
      "  zorl2-inspect snapshot | zorl2-inspect show -\n"
      "  zorl2-inspect snapshot | zorl2-inspect show --where admin=up --columns name,oper,mtu -\n"
      "  echo '0a 04 00 00 00 07' | zorl2-inspect show --type Zorid -");
  command->callback([arguments, &status] { status = Show(*arguments).Run(); });
}

}  // namespace zorl2_inspect
