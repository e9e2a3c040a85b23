#include <fmt/format.h>

#include <chrono>
#include <memory>
#include <string>

#include "check/check.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/check_text.h"
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
  std::string colour = "auto";
};

class RoundTripCommand {
 public:
  explicit RoundTripCommand(const RoundTripArguments& arguments)
      : arguments_(arguments),
        input_(arguments.input),
        view_(output_, PaletteFor(arguments.colour), arguments.json),
        before_(NewMessage(input_.type())),
        after_(NewMessage(input_.type())) {}

  int Run() {
    Record record;
    while (input_.Next(record)) {
      ++summary_.records;
      input_.Read(record, *before_);
      const zorl2::check::Verdict verdict = zorl2::check::Check(*before_);
      if (!Converts(verdict)) input_.Fail(input_.Locate(record, verdict));
      any_native_ = RoundTrip(*before_, *after_) || any_native_;
      after_->SerializePartialToString(&bytes_);
      if (bytes_ != record.bytes) Compare(record);
      if (arguments_.time) Time();
    }
    Finish();
    return summary_.losses == 0 ? kExitOk : kExitDifferent;
  }

 private:
  void Compare(const Record& record) {
    const std::vector<Loss> losses = zorl2::check::FindLosses(*before_);
    if (losses.empty()) {
      ++other_encoding_;
      return;
    }
    ++summary_.records_with_losses;
    summary_.losses += losses.size();
    const std::string where =
        input_.delimited() ? fmt::format("record {}, offset {:#x}: ", record.number, record.offset)
                           : std::string();
    for (const Loss& loss : losses) view_.Report(record.number, where, loss);
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
    const bool compares_bytes =
        input_.form() == InputForm::kWire || input_.form() == InputForm::kHex;
    if (other_encoding_ > 0 && compares_bytes) {
      summary_.notes += "; the same fields in another encoding";
      if (input_.delimited()) summary_.notes += fmt::format(" in {} records", other_encoding_);
    }
    view_.Finish(summary_);
    if (arguments_.time && natives_ > 0 && !arguments_.json) {
      output_.Print("{} native records, {:.2f} us each to native and back\n", natives_,
                    seconds_ / static_cast<double>(natives_) * 1e6);
    }
    output_.Finish();
  }

  const RoundTripArguments& arguments_;
  Input input_;
  Output output_;
  RoundTripView view_;
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
  command->add_flag("--json", arguments->json, "Print JSON");
  command->add_flag("--time", arguments->time, "Also print how long a conversion takes");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Exit status: 0 lossless, 1 losses, 2 error.\n\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect roundtrip -");
  command->callback([arguments, &status] { status = RoundTripCommand(*arguments).Run(); });
}

}  // namespace zorl2_inspect
