#include "tools/stats_command.h"

#include <sys/stat.h>
#include <unistd.h>

#include <CLI/Validators.hpp>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "tools/error.h"
#include "tools/input.h"
#include "tools/message_types.h"
#include "tools/output_check.h"
#include "tools/stats.h"
#include "tools/type_guess.h"

namespace zorl2_inspect {
namespace {

struct StatsArguments {
  std::string file;
  std::string type;
  // The stream is always delimited; the flag is there for who is used to giving it.
  bool delimited = true;
  StatsOptions stats;
};

using google::protobuf::Descriptor;
using google::protobuf::Message;

int StatsCommand(StatsArguments options) {
  const std::string name = InputName(options.file);
  const Descriptor* type = options.type.empty() ? nullptr : TypeNamed(options.file, options.type);
  const int descriptor = OpenInput(options.file);
  struct stat status {};
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    options.stats.total_bytes = static_cast<std::uint64_t>(status.st_size);
  }
  std::unique_ptr<Message> prototype;
  const TypeChooser choose = [&](std::string_view first, std::string* problem) {
    if (type == nullptr) {
      const TypeGuess guess = GuessFromWire(first);
      if (guess.type == nullptr) {
        *problem = guess.reason;
        return static_cast<const Message*>(nullptr);
      }
      PrintNote(name + ": type " + guess.type->name() +
                " guessed from the first record: " + guess.reason);
      type = guess.type;
    }
    prototype = NewMessage(*type);
    return static_cast<const Message*>(prototype.get());
  };
  std::string problem;
  const StatsResult result = RunStats(descriptor, name, choose, options.stats, stdout, &problem);
  close(descriptor);
  if (result == StatsResult::kBroken) throw InputError(name, "", problem);
  return result == StatsResult::kGood ? kExitOk : kExitDifferent;
}

}  // namespace

void AddStatsCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<StatsArguments>();
  CLI::App* command =
      app.add_subcommand("stats", "Count what a stream of length-delimited messages holds");
  command->add_option("FILE", options->file, "The stream to read; - for standard input")
      ->required()
      ->type_name("");
  command->add_option("--type", options->type, "The message type; guessed when left out")
      ->type_name("NAME");
  command->add_flag("--delimited", options->delimited, "Understood, and always so");
  command->add_flag("--json", options->stats.json, "Print JSON");
  command
      ->add_option("--list", options->stats.listed, "How many records that are not good are listed")
      ->capture_default_str()
      ->type_name("N");
  command
      ->add_option("--longest", options->stats.longest,
                   "Skip records of more bytes than this, and count them as malformed")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1} << 30))
      ->capture_default_str()
      ->type_name("BYTES");
  command->footer(
      "Converts every message to native and back, counts types, categories, protocols and sizes,\n"
      "and lists the records that cannot be converted, with their offsets.\n\n"
      "Memory does not grow with the stream. Exit status: 0 all records are good, 1 some are not,\n"
      "2 the stream cannot be read to its end.\n\n"
      "Example, two records of which the second is too short for an identifier:\n"
      "  printf '\\6\\n\\4\\0\\0\\0\\7\\5\\n\\3\\0\\0\\7' | zorl2-inspect stats --type Zorid -");
  command->callback(
      [options, &status] { status = WithOutput([&] { return StatsCommand(*options); }); });
}

}  // namespace zorl2_inspect
