#include "tools/stats.h"

#include <fmt/format.h>

#include "tools/progress.h"
#include "tools/record_counter.h"
#include "tools/record_stream.h"
#include "tools/stats_report.h"

namespace zorl2_inspect {

StatsResult RunStats(int descriptor, const std::string& name, const TypeChooser& choose_type,
                     const StatsOptions& options, std::FILE* out, std::string* problem) {
  using Status = RecordStream::Status;
  using Outcome = RecordCounter::Outcome;

  Progress progress(options.total_bytes);
  RecordStream stream(descriptor, options.longest);
  StatsReport report(out, options.json, options.listed);
  RecordSummary summary;
  std::unique_ptr<RecordCounter> counter;
  std::string_view record;
  std::string why;
  Status status;
  while ((status = stream.Next(&record)) == Status::kRecord || status == Status::kSkipped) {
    const std::size_t size = stream.consumed() - stream.content_offset();
    Outcome outcome = Outcome::kMalformed;
    if (status == Status::kSkipped) {
      why = stream.problem();
      if (summary.records == 0) report.Begin(name, "not known yet");
    } else {
      if (counter == nullptr) {
        const google::protobuf::Message* prototype = choose_type(record, problem);
        if (prototype == nullptr) return StatsResult::kBroken;
        counter = MakeRecordCounter(*prototype);
        if (summary.records == 0) report.Begin(name, prototype->GetDescriptor()->name());
      }
      outcome = counter->Take(record, stream.content_offset(), &why);
    }
    summary.Add(size);
    ++summary.outcomes[static_cast<std::size_t>(outcome)];
    if (outcome != Outcome::kGood) {
      report.Bad(summary.records, stream.offset(), size, OutcomeName(outcome), why);
    }
    progress.Update(stream.consumed(), summary.records);
  }
  summary.seconds = progress.Seconds();
  progress.Finish();

  if (summary.records == 0) report.Begin(name, "not known");
  const bool broken = status == Status::kBroken;
  if (broken) *problem = fmt::format("offset {:#x}: {}", stream.offset(), stream.problem());
  if (counter != nullptr) summary.conversions = counter->conversions();
  report.End(summary, counter != nullptr ? counter->Sections() : std::vector<CountSection>(),
             broken ? *problem : "");
  if (broken) return StatsResult::kBroken;
  return summary.outcomes[static_cast<std::size_t>(Outcome::kGood)] == summary.records
             ? StatsResult::kGood
             : StatsResult::kBad;
}

}  // namespace zorl2_inspect
