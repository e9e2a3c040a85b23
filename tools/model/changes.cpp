#include "tools/model/changes.h"

#include <fmt/format.h>

#include <utility>

#include "tools/model/elements.h"
#include "tools/model/field_text.h"
#include "tools/model/message_types.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using Kind = FieldChange::Kind;

const pb::Zorid& ZoridIn(const Message& element, const FieldDescriptor& identifier) {
  return static_cast<const pb::Zorid&>(element.GetReflection()->GetMessage(element, &identifier));
}

}  // namespace

Differ::Differ(const Descriptor& element, Side held, const Filter& before, const Filter& after,
               Report report)
    : type_(element),
      identifier_(IdentifierOf(element)),
      held_side_(held),
      before_(before),
      after_(after),
      report_(std::move(report)),
      held_(NewMessage(element)) {
  if (identifier_ == nullptr) groups_[{}];
}

Differ::Identifier Differ::IdentifierIn(const Message& element) const {
  if (identifier_ == nullptr) return {};
  const pb::Zorid& id = ZoridIn(element, *identifier_);
  return {id.value().begin(), id.value().end()};
}

std::string Differ::KeyText(const Message& element, std::size_t occurrence) const {
  if (identifier_ == nullptr) return fmt::format("{} {}", type_.name(), occurrence);
  std::string text = DottedText(ZoridIn(element, *identifier_));
  if (occurrence > 1) text += fmt::format(" (occurrence {})", occurrence);
  return text;
}

void Differ::Hold(const Message& element, std::string_view bytes) {
  groups_[IdentifierIn(element)].held.emplace_back(bytes);
}

void Differ::Compare(const Message& element, std::string_view bytes) {
  const Side side = held_side_ == Side::kBefore ? Side::kAfter : Side::kBefore;
  const auto found = groups_.find(IdentifierIn(element));
  if (found == groups_.end()) return ReportLone(element, side, 1);
  Group& group = found->second;
  const std::size_t occurrence = ++group.compared;
  if (occurrence > group.held.size()) return ReportLone(element, side, occurrence);
  const std::string& held = group.held[occurrence - 1];
  // Most elements of two captures are equal, and parsing costs far more than this.
  if (held == bytes) {
    totals_.same += before_.Selects(element) || after_.Selects(element) ? 1 : 0;
    return;
  }
  held_->ParsePartialFromString(held);
  if (side == Side::kAfter) {
    ReportPair(*held_, element, occurrence);
  } else {
    ReportPair(element, *held_, occurrence);
  }
}

void Differ::Finish() {
  for (const auto& [identifier, group] : groups_) {
    for (std::size_t i = group.compared; i < group.held.size(); ++i) {
      held_->ParsePartialFromString(group.held[i]);
      ReportLone(*held_, held_side_, i + 1);
    }
  }
}

void Differ::ReportLone(const Message& element, Side side, std::size_t occurrence) {
  const bool added = side == Side::kAfter;
  if (!(added ? after_ : before_).Selects(element)) return;
  ++(added ? totals_.added : totals_.removed);
  report_({added ? Kind::kAdded : Kind::kRemoved,
           KeyText(element, occurrence),
           added ? nullptr : &element,
           added ? &element : nullptr,
           {}});
}

void Differ::ReportPair(const Message& before, const Message& after, std::size_t occurrence) {
  if (!before_.Selects(before) && !after_.Selects(after)) return;
  std::vector<FieldChange> fields = CompareFields(before, after);
  if (fields.empty()) {
    ++totals_.same;
    return;
  }
  ++totals_.changed;
  report_({Kind::kChanged, KeyText(after, occurrence), &before, &after, std::move(fields)});
}

void Differ::CompareAround(const Message& before, const Message& after) {
  const Descriptor& type = *before.GetDescriptor();
  std::vector<FieldChange> fields = CompareFields(before, after, ListOf(type));
  if (fields.empty()) return;
  totals_.around = true;
  report_({Kind::kChanged, type.name(), &before, &after, std::move(fields)});
}

}  // namespace zorl2_inspect
