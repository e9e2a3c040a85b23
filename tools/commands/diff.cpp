#include <fmt/format.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/input/message_reader.h"
#include "tools/model/changes.h"
#include "tools/model/elements.h"
#include "tools/model/filter.h"
#include "tools/model/findings.h"
#include "tools/model/message_types.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/views/changes_view.h"

namespace zorl2_inspect {
namespace {

struct DiffArguments {
  InputOptions input;
  std::string before;
  std::string after;
  bool json = false;
  bool strict = false;
  std::vector<std::string> where;
  std::string colour = "auto";
};

using google::protobuf::Message;

// One side of the comparison.
class Capture {
 public:
  using Take = std::function<void(const Message& element, std::string_view bytes)>;

  Capture(const DiffArguments& arguments, const std::string& file, Output& output)
      : input_(OptionsFor(arguments, file)),
        reader_(input_, arguments.strict, [&output] { output.Flush(); }),
        filter_(input_.type(), arguments.where),
        strict_(arguments.strict),
        list_(input_.delimited() ? nullptr : ListOf(input_.type())),
        message_(NewMessage(input_.type())) {}

  const Input& input() const { return input_; }
  const Filter& filter() const { return filter_; }
  int status() const { return reader_.status(); }
  // The elements of a list, or else the records.
  const google::protobuf::Descriptor& element() const {
    return list_ != nullptr ? *list_->message_type() : input_.type();
  }
  // The message that contains the elements; null if they are records. After ForEach().
  const Message* around() const { return list_ != nullptr ? message_.get() : nullptr; }

  void ForEach(const Take& take) {
    Record record;
    while (reader_.Next(record, *message_)) {
      // A message that a converter rejects can still be compared.
      if (strict_ || !message_->IsInitialized()) {
        reader_.Report(record, FindAll(*message_).rejections);
      }
      if (list_ == nullptr) {
        take(*message_, record.bytes);
        continue;
      }
      const auto& reflection = *message_->GetReflection();
      for (int i = 0; i < reflection.FieldSize(*message_, list_); ++i) {
        const Message& element = reflection.GetRepeatedMessage(*message_, list_, i);
        take(element, element.SerializePartialAsString());
      }
    }
  }

 private:
  static InputOptions OptionsFor(const DiffArguments& arguments, const std::string& file) {
    InputOptions options = arguments.input;
    options.file = file;
    options.strict = arguments.strict;
    return options;
  }

  Input input_;
  MessageReader reader_;
  Filter filter_;
  bool strict_;
  const google::protobuf::FieldDescriptor* list_;
  std::unique_ptr<Message> message_;
};

// Whether to hold the later capture in memory. Holds the smaller one, or a file if the other
// capture is a pipe, whose size is not known.
bool HoldsLater(const Input& before, const Input& after) {
  if (before.size() == 0 || after.size() == 0) return before.size() == 0 && after.size() > 0;
  return after.size() < before.size();
}

int RunDiff(const DiffArguments& arguments) {
  if (arguments.before == "-" && arguments.after == "-") {
    throw Error("standard input", "both captures", "one of them in a file");
  }
  Output output;
  Capture before(arguments, arguments.before, output);
  Capture after(arguments, arguments.after, output);
  if (&before.element() != &after.element()) {
    throw Error(after.input().name(), after.element().name(),
                fmt::format("{} as in {}", before.element().name(), before.input().name()));
  }
  ChangesView view(output, before.input().name(), after.input().name(), arguments.json,
                   PaletteFor(arguments.colour));
  const bool holds_later = HoldsLater(before.input(), after.input());
  Differ differ(before.element(), holds_later ? Differ::Side::kAfter : Differ::Side::kBefore,
                before.filter(), after.filter(),
                [&view](const ElementChange& change) { view.Add(change); });
  (holds_later ? after : before).ForEach([&differ](const Message& element, std::string_view bytes) {
    differ.Hold(element, bytes);
  });
  (holds_later ? before : after).ForEach([&differ](const Message& element, std::string_view bytes) {
    differ.Compare(element, bytes);
  });
  differ.Finish();
  if (arguments.where.empty() && before.around() != nullptr && after.around() != nullptr) {
    differ.CompareAround(*before.around(), *after.around());
  }
  view.Finish(differ.totals());
  output.Finish();
  return std::max(
      {before.status(), after.status(), differ.totals().equal() ? kExitOk : kExitDifferent});
}

}  // namespace

void AddDiffCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<DiffArguments>();
  CLI::App* command =
      app.add_subcommand("diff", "Compare two captures: list what was added, removed and changed");
  command->add_option("A", arguments->before, "Read the earlier capture from this file")
      ->required()
      ->type_name("");
  command
      ->add_option("B", arguments->after,
                   "Read the later one from this file; either may be - for standard input")
      ->required()
      ->type_name("");
  AddReadingOptions(*command, arguments->input);
  AddStrictOption(*command, arguments->strict);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  AddWhereOption(*command, arguments->where);
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Entries are paired by identifier, block entries by protocol, shutdown protocols as a set; "
      "their order makes no difference. A list can be compared with a single entry. Texts of more "
      "than 200 bytes are compared by lines. \"!!\" marks an element that does not convert. The "
      "smaller capture is held in memory: changes appear in the order of the larger one, followed "
      "by what only the smaller one contains. --where compares the elements that are selected "
      "before or after; \"zorl2-inspect show --help\" describes its conditions.\n\n"
      "Exit status: 0 equal, 1 different, or a message is damaged or lacks a field, 2 an input "
      "cannot be read.\n\n"
      "Example:\n"
      "  printf 'value: [0,0,0,7]' > a.txt; printf 'value: [0,0,0,8]' > b.txt\n"
      "  zorl2-inspect diff --type Zorid a.txt b.txt");
  command->callback([arguments, &status] { status = RunDiff(*arguments); });
}

}  // namespace zorl2_inspect
