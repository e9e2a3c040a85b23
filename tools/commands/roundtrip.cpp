#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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
        after_(NewMessage(input_.type())) {
    view_.Begin(input_.name(), input_.type().name(), input_.delimited());
    reader_.OnDamage([this](const Record& record, const Problem& problem) {
      ++summary_.malformed_records;
      view_.Damage(record.number, OffsetOf(record), problem);
    });
  }

  int Run() {
    try {
      ReadAll();
    } catch (const Error&) {
      // What a program reads is complete also if it ends early.
      if (arguments_.json) Finish();
      throw;
    }
    Finish();
    return std::max(reader_.status(), summary_.losses == 0 ? kExitOk : kExitDifferent);
  }

 private:
  void ReadAll() {
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
  }

  InputOptions WithHooks(const RoundTripArguments& arguments) {
    InputOptions options = arguments.input;
    options.strict = arguments.strict;
    options.before_wait = [this] { output_.Flush(); };
    return options;
  }

  // Lists why elements do not convert, and what the others lose.
  void Reject(const Record& record) {
    Findings findings = FindAll(*before_);
    const std::vector<zorl2::check::Verdict> rejections = findings.rejections;
    any_native_ = true;
    ++summary_.rejected_records;
    // The report may end the command.
    if (!arguments_.json) reader_.Report(record, rejections);
    List(record, std::move(findings));
    if (arguments_.json) reader_.Report(record, rejections);
  }

  void Compare(const Record& record) {
    Findings findings{{}, zorl2::check::FindLosses(*before_)};
    if (findings.losses.empty()) {
      ++other_encoding_;
    } else {
      List(record, std::move(findings));
    }
  }

  void List(const Record& record, Findings findings) {
    summary_.records_with_losses += findings.losses.empty() ? 0 : 1;
    summary_.losses += findings.losses.size();
    view_.Report({record.number, OffsetOf(record), record.bytes, before_.get(),
                  std::move(findings.rejections), std::move(findings.losses)});
  }

  std::optional<std::uint64_t> OffsetOf(const Record& record) const {
    return input_.has_offsets() ? std::optional(record.offset) : std::nullopt;
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
    summary_.what = input_.delimited() ? fmt::format("{} record{}", summary_.records,
                                                     summary_.records == 1 ? "" : "s")
                                       : std::string(input_.type().name());
    if (summary_.malformed_records > 0) {
      summary_.notes += fmt::format(", {} more malformed", summary_.malformed_records);
    }
    if (!any_native_) summary_.notes += "; no native record, parsed and serialized only";
    if (other_encoding_ > 0 && input_.has_offsets()) {
      summary_.notes += "; the same fields in another encoding";
      if (input_.delimited()) {
        summary_.notes +=
            fmt::format(" in {} record{}", other_encoding_, other_encoding_ == 1 ? "" : "s");
      }
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
      "roundtrip", "Convert messages to native records and back, and list what is lost");
  AddInputOptions(*command, arguments->input);
  AddFollowOption(*command, arguments->input);
  AddStrictOption(*command, arguments->strict);
  command->add_flag("--json", arguments->json, "Print JSON; text by default");
  command->add_flag("--time", arguments->time,
                    "Print how long a conversion takes, too; not measured by default");
  AddColourOption(*command, arguments->colour);
  command->footer(
      "Lists each value that is lost with its field path, the value before and after, and the kind "
      "of loss.\n\n"
      "Exit status: 0 lossless, 1 losses, damaged messages or messages that do not convert, 2 the "
      "input cannot be read.\n\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect roundtrip -");
  command->callback([arguments, &status] { status = RoundTripCommand(*arguments).Run(); });
}

}  // namespace zorl2_inspect
