#include "tools/model/record_counter.h"

#include <fmt/format.h>

#include "check/check.h"
#include "tools/model/check_text.h"
#include "tools/model/message_types.h"
#include "tools/model/native_types.h"
#include "tools/wire/wire_find.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;

constexpr std::size_t kHuge = std::size_t{1} << 20;

// "intfEntry.parent defaulted"; all unknown fields have one label.
std::string LossLabel(const Loss& loss) {
  if (loss.kind == LossKind::kUnknownField) return LossKindName(loss.kind);
  std::string path;
  bool in_index = false;
  for (const char c : loss.field) {
    if (c == '[') in_index = true;
    if (!in_index) path += c;
    if (c == ']') in_index = false;
  }
  return fmt::format("{} {}", path, LossKindName(loss.kind));
}

std::uint64_t CountNative(const Message& message) {
  std::uint64_t count = 0;
  ForEachNative(message, [&](const auto&, const auto&, const auto&) { ++count; });
  return count;
}

}  // namespace

const char* OutcomeName(RecordOutcome outcome) {
  static const char* const kNames[kRecordOutcomes] = {"good", "malformed", "incomplete",
                                                      "rejected"};
  return kNames[static_cast<std::size_t>(outcome)];
}

RecordCounter::RecordCounter(const google::protobuf::Descriptor& type, Filter* filter)
    : message_(NewMessage(type)), back_(NewMessage(type)), filter_(filter) {}

std::optional<RecordOutcome> RecordCounter::Take(std::string_view record, Problem* problem) {
  // The memory of a huge record is not kept for the later ones.
  if (record.size() > kHuge) message_.reset(message_->New());
  if (!message_->ParsePartialFromArray(record.data(), static_cast<int>(record.size()))) {
    *problem = FirstWireError(record, *message_->GetDescriptor()).value();
    return RecordOutcome::kMalformed;
  }
  if (!filter_->Apply(message_.get())) return std::nullopt;
  zorl2::check::Verdict verdict = zorl2::check::Check(*message_);
  if (!Converts(verdict)) {
    verdict.field = filter_->PathBefore(verdict.field);
    *problem = RejectionOf(verdict);
    problem->offset = OffsetOf(record, *message_->GetDescriptor(), verdict.field);
    return IsIncomplete(verdict) ? RecordOutcome::kIncomplete : RecordOutcome::kRejected;
  }
  if (filter_->empty()) {
    Convert(record);
  } else {
    message_->SerializeToString(&selected_);
    Convert(selected_);
  }
  counts_.Add(*message_);
  return RecordOutcome::kGood;
}

void RecordCounter::Convert(std::string_view record) {
  if (!RoundTrip(*message_, *back_)) return;
  const bool single = FindNativeType(*message_->GetDescriptor()) != nullptr;
  conversions_ += 2 * (single ? 1 : CountNative(*message_));
  // Equal bytes lose nothing.
  back_->SerializeToString(&bytes_);
  if (bytes_ == record) return;
  for (const Loss& loss : zorl2::check::FindLosses(*message_)) ++losses_[LossLabel(loss)];
}

std::vector<CountSection> RecordCounter::Sections() const {
  std::vector<CountSection> sections = counts_.Sections();
  if (!losses_.empty()) {
    sections.push_back({"changed by the conversion to native", {losses_.begin(), losses_.end()}});
  }
  return sections;
}

}  // namespace zorl2_inspect
