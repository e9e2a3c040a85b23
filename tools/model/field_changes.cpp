#include "tools/model/field_changes.h"

#include <fmt/format.h>
#include <google/protobuf/unknown_field_set.h>
#include <google/protobuf/util/message_differencer.h>

#include <algorithm>

#include "interface_entry.pb.h"
#include "tools/model/field_text.h"
#include "tools/model/unknown_fields.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::UnknownField;
using google::protobuf::UnknownFieldSet;
using google::protobuf::util::MessageDifferencer;
using SpecificField = MessageDifferencer::SpecificField;
using Path = std::vector<SpecificField>;

// Beyond this size a list is compared place by place: matching its elements takes quadratic time.
constexpr int kMatchedElements = 500;

bool IsZorid(const FieldDescriptor* field) {
  return field != nullptr && field->message_type() == pb::Zorid::descriptor();
}

ValueRef RefTo(const Message& parent, const FieldDescriptor& field, int index) {
  if (!field.is_repeated()) return {&parent, nullptr, &field, -1};
  if (index < 0 || index >= parent.GetReflection()->FieldSize(parent, &field)) return {};
  return {&parent, nullptr, &field, index};
}

ValueRef RefTo(const UnknownFieldSet* fields, int index) {
  if (fields == nullptr || index < 0 || index >= fields->field_count()) return {};
  return {nullptr, &fields->field(index), nullptr, -1};
}

// Records what the differencer finds.
class Collector : public MessageDifferencer::Reporter {
 public:
  Collector(const Message& before, const Message& after, std::vector<FieldChange>* changes)
      : before_(before), after_(after), changes_(changes) {}

  // Ignores the messages around the last field and follows the path from the top.
  void ReportAdded(const Message&, const Message&, const Path& path) override {
    Report(FieldChange::Kind::kAdded, path);
  }
  void ReportDeleted(const Message&, const Message&, const Path& path) override {
    Report(FieldChange::Kind::kRemoved, path);
  }
  void ReportModified(const Message&, const Message&, const Path& path) override {
    // A message that differs is reported after those of its fields that do.
    const FieldDescriptor* field = path.back().field;
    if (field != nullptr && field->message_type() != nullptr) return;
    Report(FieldChange::Kind::kChanged, path);
  }

 private:
  void Report(FieldChange::Kind kind, const Path& path) {
    const Message* old_parent = &before_;
    const Message* new_parent = &after_;
    FieldChange change{kind, "", {}, {}};
    for (std::size_t i = 0; i < path.size(); ++i) {
      const SpecificField& step = path[i];
      if (!change.path.empty()) change.path += '.';
      if (step.field == nullptr) {
        change.path += fmt::format("#{}", step.unknown_field_number);
        if (kind != FieldChange::Kind::kAdded) {
          change.old_value = RefTo(step.unknown_field_set1, step.unknown_field_index1);
        }
        if (kind != FieldChange::Kind::kRemoved) {
          change.new_value = RefTo(step.unknown_field_set2, step.unknown_field_index2);
        }
        break;
      }
      const bool added = kind == FieldChange::Kind::kAdded;
      change.path += step.field->name();
      change.path += Subscript(added ? *new_parent : *old_parent, step, added);
      // An identifier is one value, whichever of its octets differ.
      const bool last = i + 1 == path.size();
      const bool whole_identifier = !last && IsZorid(step.field) && path[i + 1].field != nullptr;
      if (whole_identifier) change.kind = FieldChange::Kind::kChanged;
      if (last || whole_identifier) {
        if (change.kind != FieldChange::Kind::kAdded) {
          change.old_value = RefTo(*old_parent, *step.field, step.index);
        }
        if (change.kind != FieldChange::Kind::kRemoved) {
          change.new_value = RefTo(*new_parent, *step.field, step.new_index);
        }
        break;
      }
      old_parent = Descend(*old_parent, step, step.index);
      new_parent = Descend(*new_parent, step, step.new_index);
    }
    // The octets of one identifier are reported one after the other.
    if (!changes_->empty() && changes_->back().path == change.path && InIdentifier(path)) return;
    changes_->push_back(std::move(change));
  }

  static bool InIdentifier(const Path& path) {
    return std::any_of(path.begin(), path.end(),
                       [](const SpecificField& step) { return IsZorid(step.field); });
  }

  static const Message* Descend(const Message& parent, const SpecificField& step, int index) {
    const auto& reflection = *parent.GetReflection();
    if (step.field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) return &parent;
    if (!step.field->is_repeated()) return &reflection.GetMessage(parent, step.field);
    if (index < 0 || index >= reflection.FieldSize(parent, step.field)) return &parent;
    return &reflection.GetRepeatedMessage(parent, step.field, index);
  }

  // What distinguishes an element of a list from the others: the protocol of a block entry, nothing
  // for a member of a set, otherwise the index.
  static std::string Subscript(const Message& parent, const SpecificField& step, bool added) {
    if (!step.field->is_repeated()) return "";
    if (step.field->cpp_type() == FieldDescriptor::CPPTYPE_ENUM) return "";
    const int index = added ? step.new_index : step.index;
    const auto& reflection = *parent.GetReflection();
    if (step.field->message_type() == pb::BlockInfo::descriptor() && index >= 0 &&
        index < reflection.FieldSize(parent, step.field)) {
      const Message& element = reflection.GetRepeatedMessage(parent, step.field, index);
      return fmt::format("[{}]", ValueText(element, *element.GetDescriptor()->field(0), -1));
    }
    return fmt::format("[{}]", index);
  }

  const Message& before_;
  const Message& after_;
  std::vector<FieldChange>* changes_;
};

bool IsLong(const pb::IntfEntry& entry) {
  return entry.shutdownprotos_size() > kMatchedElements ||
         entry.blockinfo_size() > kMatchedElements;
}

const pb::IntfEntry* EntryIn(const Message& message) {
  if (message.GetDescriptor() == pb::IntfEntry::descriptor()) {
    return static_cast<const pb::IntfEntry*>(&message);
  }
  if (message.GetDescriptor() == pb::IntfIndication::descriptor()) {
    return &static_cast<const pb::IntfIndication&>(message).intfentry();
  }
  return nullptr;
}

}  // namespace

bool ValueRef::IsText() const {
  if (parent != nullptr) return field->cpp_type() == FieldDescriptor::CPPTYPE_STRING;
  return unknown != nullptr && unknown->type() == UnknownField::TYPE_LENGTH_DELIMITED;
}

std::string ValueRef::Text() const {
  if (parent == nullptr) return unknown->length_delimited();
  const auto& reflection = *parent->GetReflection();
  return index < 0 ? reflection.GetString(*parent, field)
                   : reflection.GetRepeatedString(*parent, field, index);
}

std::string ValueRef::Line(std::size_t limit) const {
  if (unknown != nullptr) return UnknownText(*unknown, limit);
  if (parent == nullptr) return "";
  return ValueText(*parent, *field, index, limit);
}

std::vector<FieldChange> CompareFields(const Message& before, const Message& after,
                                       const FieldDescriptor* without) {
  std::vector<FieldChange> changes;
  Collector collector(before, after, &changes);
  MessageDifferencer differencer;
  differencer.ReportDifferencesTo(&collector);
  if (without != nullptr) differencer.IgnoreField(without);
  const pb::IntfEntry* entry_before = EntryIn(before);
  const pb::IntfEntry* entry_after = EntryIn(after);
  if (entry_before != nullptr && !IsLong(*entry_before) && !IsLong(*entry_after)) {
    const auto* type = pb::IntfEntry::descriptor();
    differencer.TreatAsSet(type->FindFieldByName("shutdownProtos"));
    differencer.TreatAsMap(type->FindFieldByName("blockInfo"),
                           pb::BlockInfo::descriptor()->FindFieldByName("protocol"));
  }
  differencer.Compare(before, after);
  return changes;
}

}  // namespace zorl2_inspect
