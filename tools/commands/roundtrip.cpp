#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>

#include "check/check.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/input/message_reader.h"
#include "tools/model/check_text.h"
#include "tools/model/findings.h"
#include "tools/model/message_types.h"
#include "tools/model/native_types.h"
#include "tools/text/error.h"
#include "tools/text/output.h"
#include "tools/views/roundtrip_view.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;
using Clock = std::chrono::steady_clock;
using zorl2::check::Loss;

struct RoundTripArguments {
  InputOptions input;
  bool json = false;
  bool time = false;
  bool strict = false;
  std::string colour = "auto";
};

class RoundTripCommand {
 public:
  explicit RoundTripCommand(const RoundTripArguments& arguments)
      : arguments_(arguments),
        view_(output_, PaletteFor(arguments.colour), arguments.json),
        input_(WithHooks(arguments)),
        reader_(input_, arguments.strict, [this] { output_.Flush(); }),
        before_(NewMessage(input_.type())),
        after_(NewMessage(input_.type())) {}

  int Run() {
    Record record;
    while (reader_.Next(record, *before_)) {
      ++summary_.records;
      if (!Converts(zorl2::check::Check(*before_))) {
        Reject(record);
        continue;
      }
      any_native_ = RoundTrip(*before_, *after_) || any_native_;
      after_->SerializePartialToString(&bytes_);
      if (bytes_ != record.bytes) Compare(record);
      if (arguments_.time) Time();
    }
    Finish();
    return std::max(reader_.status(), summary_.losses == 0 ? kExitOk : kExitDifferent);
  }

 private:
  InputOptions WithHooks(const RoundTripArguments& arguments) {
    InputOptions options = arguments.input;
    options.strict = arguments.strict;
    options.before_wait = [this] { output_.Flush(); };
    return options;
  }

  // Lists why elements do not convert, and what the others lose.
  void Reject(const Record& record) {
    const Findings findings = FindAll(*before_);
    reader_.Report(record, findings.rejections);
    any_native_ = true;
    ++summary_.rejected_records;
    for (const zorl2::check::Verdict& verdict : findings.rejections) {
      view_.Reject(record.number, Where(record), verdict);
    }
    List(record, findings.losses);
  }

  void Compare(const Record& record) {
    const std::vector<Loss> losses = zorl2::check::FindLosses(*before_);
    if (losses.empty()) ++other_encoding_;
    List(record, losses);
  }

  void List(const Record& record, const std::vector<Loss>& losses) {
    if (losses.empty()) return;
    ++summary_.records_with_losses;
    summary_.losses += losses.size();
    const std::string where = Where(record);
    for (const Loss& loss : losses) view_.Report(record.number, where, loss);
  }

  std::string Where(const Record& record) const {
    if (!input_.delimited()) return {};
    return fmt::format("record {}, offset {:#x}: ", record.number, record.offset);
  }

  // Repeats the conversion of a single message, so that the figure does not depend on one run.
  void Time() {
    ForEachNative(*before_, [&](const auto&, const auto&, const auto&) { ++natives_; });
    const Clock::time_point start = Clock::now();
    Clock::duration taken{};
    int repetitions = 0;
    do {
      RoundTrip(*before_, *after_);
      ++repetitions;
      taken = Clock::now() - start;
    } while (!input_.delimited() && taken < std::chrono::milliseconds(100));
    seconds_ += std::chrono::duration<double>(taken).count() / repetitions;
  }

  void Finish() {
    summary_.name = input_.name();
    summary_.is_stream = input_.delimited();
    summary_.what = input_.delimited() ? fmt::format("{} records", summary_.records)
                                       : std::string(input_.type().name());
    if (!any_native_) summary_.notes += "; no native record, parsed and serialized only";
    if (other_encoding_ > 0 && input_.has_offsets()) {
      summary_.notes += "; the same fields in another encoding";
      if (input_.delimited()) summary_.notes += fmt::format(" in {} records", other_encoding_);
    }
    if (arguments_.time) summary_.timed_records = natives_;
    if (natives_ > 0) summary_.microseconds = seconds_ / static_cast<double>(natives_) * 1e6;
    view_.Finish(summary_);
    output_.Finish();
  }

  const RoundTripArguments& arguments_;
  Output output_;
  RoundTripView view_;
  Input input_;
  MessageReader reader_;
  std::unique_ptr<Message> before_;
  std::unique_ptr<Message> after_;
  std::string bytes_;
  RoundTripSummary summary_;
  bool any_native_ = false;
  std::uint64_t other_encoding_ = 0;
  std::size_t natives_ = 0;
  double seconds_ = 0;
};

}  // namespace

void AddRoundtripCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<RoundTripArguments>();
  CLI::App* command = app.add_subcommand(
      "roundtrip",
      "Convert messages to native records and back, and list what is lost with its field\n"
      "path, the value before and after, and the kind of loss");
  AddInputOptions(*command, arguments->input);
  AddFollowOption(*command, arguments->input);
  AddStrictOption(*command, arguments->strict);
  command->add_flag("--json", arguments->json, "Print JSON");
  command->add_flag("--time", arguments->time, "Also print how long a conversion takes");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Exit status: 0 lossless, 1 losses, damaged messages or messages that do not convert, 2 the\n"
      "input cannot be read.\n\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect roundtrip -");
  command->callback([arguments, &status] { status = RoundTripCommand(*arguments).Run(); });
}

}  // namespace zorl2_inspect
