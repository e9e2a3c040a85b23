#include "tools/roundtrip_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>

#include "tools/colour_option.h"
#include "tools/colours.h"
#include "tools/conversion.h"
#include "tools/error.h"
#include "tools/input_options.h"
#include "tools/losses.h"
#include "tools/message_types.h"
#include "tools/output.h"
#include "tools/plain_text.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;
using Clock = std::chrono::steady_clock;

struct RoundTripArguments {
  InputOptions input;
  bool json = false;
  bool time = false;
  std::string colour = "auto";
};

class RoundTrip {
 public:
  explicit RoundTrip(const RoundTripArguments& options)
      : options_(options),
        input_(options.input),
        palette_(UseColours(options.colour, STDOUT_FILENO)),
        output_("-"),
        before_(NewMessage(input_.type())),
        after_(NewMessage(input_.type())) {}

  int Run() {
    Record record;
    while (input_.Next(record)) {
      ++records_;
      // Only the types that can be refused or that are timed cost a look at the message.
      input_.Parse(record, *before_);
      if (const auto refusal = FindRefusal(*before_)) {
        input_.Fail(record, refusal->path, refusal->problem);
      }
      any_native_ = ThereAndBack(*before_, *after_) || any_native_;
      after_->SerializePartialToString(&bytes_);
      if (bytes_ != record.bytes) Compare(record);
      if (options_.time) Time();
    }
    Summarise();
    output_.Finish();
    return differences_ == 0 ? kExitOk : kExitDifferent;
  }

 private:
  void Compare(const Record& record) {
    const std::vector<Loss> losses = FindLosses(*before_, *after_);
    if (losses.empty()) {
      ++other_encoding_;
      return;
    }
    ++records_with_differences_;
    for (const Loss& loss : losses) Report(record, loss);
  }

  void Report(const Record& record, const Loss& loss) {
    ++differences_;
    if (options_.json) {
      output_.Write(fmt::format(
          "{}{{\"record\": {}, \"path\": {}, \"old\": {}, \"new\": {}, "
          "\"reason\": {}}}",
          differences_ == 1 ? "{\"differences\": [\n  " : ",\n  ", record.number, Quoted(loss.path),
          Quoted(loss.before), Quoted(loss.after), Quoted(loss.reason)));
      return;
    }
    const std::string where =
        input_.delimited() ? fmt::format("record {} at offset {}: ", record.number, record.offset)
                           : std::string();
    output_.Write(fmt::format("{}{}: {} -> {} ({})\n", where, palette_(Colour::kBold, loss.path),
                              palette_(Colour::kRed, loss.before),
                              palette_(Colour::kGreen, loss.after), loss.reason));
  }

  // Long enough for a figure that does not depend on one run.
  void Time() {
    natives_ += CountNative(*before_);
    const Clock::time_point start = Clock::now();
    Clock::duration taken{};
    int repetitions = 0;
    do {
      ThereAndBack(*before_, *after_);
      ++repetitions;
      taken = Clock::now() - start;
    } while (!input_.delimited() && taken < std::chrono::milliseconds(100));
    seconds_ += std::chrono::duration<double>(taken).count() / repetitions;
  }

  void Summarise() {
    if (options_.json) {
      output_.Write(fmt::format("{}\"lossless\": {}, \"records\": {}}}\n",
                                differences_ == 0 ? "{\"differences\": [], " : "\n], ",
                                differences_ == 0, records_));
      return;
    }
    const std::string what = input_.delimited() ? fmt::format("{} records", records_)
                                                : std::string(input_.type().name());
    std::string verdict = palette_(Colour::kGreen, "lossless");
    if (differences_ > 0) {
      verdict = palette_(Colour::kYellow, fmt::format("{} difference{}", differences_,
                                                      differences_ == 1 ? "" : "s"));
      if (input_.delimited()) verdict += fmt::format(" in {} records", records_with_differences_);
    }
    std::string notes;
    if (!any_native_) notes += "; no native record, parsed and serialised only";
    if (other_encoding_ > 0 && ComparesBytes()) {
      notes += "; the same fields in another encoding";
      if (input_.delimited()) notes += fmt::format(" in {} records", other_encoding_);
    }
    output_.Write(fmt::format("{}: {} ({}{})\n", input_.name(), verdict, what, notes));
    if (options_.time && natives_ > 0) {
      output_.Write(fmt::format("{} native records, {:.2f} us each to native and back\n", natives_,
                                seconds_ / static_cast<double>(natives_) * 1e6));
    }
  }

  bool ComparesBytes() const {
    return input_.form() == InputForm::kWire || input_.form() == InputForm::kHex;
  }

  const RoundTripArguments& options_;
  Input input_;
  Palette palette_;
  Output output_;
  std::unique_ptr<Message> before_;
  std::unique_ptr<Message> after_;
  std::string bytes_;
  bool any_native_ = false;
  std::uint64_t records_ = 0;
  std::uint64_t records_with_differences_ = 0;
  std::uint64_t differences_ = 0;
  std::uint64_t other_encoding_ = 0;
  std::size_t natives_ = 0;
  double seconds_ = 0;
};

}  // namespace

void AddRoundtripCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<RoundTripArguments>();
  CLI::App* command = app.add_subcommand(
      "roundtrip",
      "Converts messages to native records and back, and says \"lossless\" or lists\nevery "
      "difference with its field path, old and new value and the reason");
  AddInputOptions(*command, options->input);
  command->add_flag("--json", options->json, "Print the differences as JSON");
  command->add_flag("--time", options->time, "Also print the time that a conversion takes");
  AddColourOption(*command, options->colour);
  command->footer(
      "Exit status: 0 lossless, 1 differences, 2 bad input.\n"
      "Example:\n"
      "  zorl2-inspect snapshot | zorl2-inspect roundtrip -");
  command->callback([options, &status] { status = RoundTrip(*options).Run(); });
}

}  // namespace zorl2_inspect
