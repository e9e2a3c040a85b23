#include "tools/input/message_reader.h"

#include <fmt/format.h>

#include <utility>

namespace zorl2_inspect {
namespace {

// The limit for one record. Finding the place of a report takes a walk through the bytes.
constexpr std::size_t kMostReports = 20;

}  // namespace

MessageReader::MessageReader(Input& input, bool strict, std::function<void()> before_report)
    : input_(input), strict_(strict), before_report_(std::move(before_report)) {}

bool MessageReader::Next(Record& record, google::protobuf::Message& message) {
  while (input_.Next(record)) {
    if (record.damage) {
      if (on_damage_) on_damage_(record, *record.damage);
      Report(*record.damage);
      if (input_.CannotRead()) status_ = kExitError;
      continue;
    }
    const auto problem = input_.Parse(record, message);
    if (!problem) return true;
    if (on_damage_) on_damage_(record, *problem);
    if (!input_.delimited()) input_.Fail(*problem);
    Report(*problem);
  }
  return false;
}

void MessageReader::Report(const Record& record,
                           const std::vector<zorl2::check::Verdict>& rejections) {
  for (std::size_t i = 0; i < rejections.size() && i < kMostReports; ++i) {
    Report(input_.Locate(record, rejections[i]));
  }
  if (rejections.size() <= kMostReports) return;
  PrintError(fmt::format("{}: {} more elements do not convert", input_.name(),
                         rejections.size() - kMostReports));
}

void MessageReader::Report(const Problem& problem) {
  if (strict_) input_.Fail(problem);
  if (before_report_) before_report_();
  PrintError(fmt::format("{}: {}", input_.name(), ProblemText(problem)));
  status_ = kExitDifferent;
}

}  // namespace zorl2_inspect
