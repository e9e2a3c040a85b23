#include "tools/diff_fields.h"

#include <fmt/format.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/unknown_field_set.h>
#include <google/protobuf/util/message_differencer.h>

#include <algorithm>

#include "interface_entry.pb.h"
#include "tools/plain_text.h"

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
constexpr std::size_t kTextLimit = 200;
constexpr int kShownValues = 8;

bool IsZorid(const FieldDescriptor* field) {
  return field != nullptr && field->message_type() == pb::Zorid::descriptor();
}

std::string NestedText(const Message& message) {
  if (message.GetDescriptor() == pb::Zorid::descriptor()) return IdentifierText(message);
  google::protobuf::TextFormat::Printer printer;
  printer.SetSingleLineMode(true);
  std::string text;
  printer.PrintToString(message, &text);
  if (!text.empty() && text.back() == ' ') text.pop_back();
  if (text.size() > kTextLimit) {
    text.resize(kTextLimit);
    text += "...";
  }
  return "{ " + text + " }";
}

std::string ValueText(const Message& parent, const FieldDescriptor& field, int index) {
  const auto& reflection = *parent.GetReflection();
  const bool repeated = field.is_repeated();
  if (repeated && (index < 0 || index >= reflection.FieldSize(parent, &field))) return "";
  std::string scratch;
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_MESSAGE:
      return NestedText(repeated ? reflection.GetRepeatedMessage(parent, &field, index)
                                 : reflection.GetMessage(parent, &field));
    case FieldDescriptor::CPPTYPE_STRING:
      return Quoted(repeated
                        ? reflection.GetRepeatedStringReference(parent, &field, index, &scratch)
                        : reflection.GetStringReference(parent, &field, &scratch),
                    kTextLimit);
    default:
      google::protobuf::TextFormat::PrintFieldValueToString(parent, &field, repeated ? index : -1,
                                                            &scratch);
      return scratch;
  }
}

std::string UnknownText(const UnknownFieldSet* fields, int index) {
  if (fields == nullptr || index < 0 || index >= fields->field_count()) return "";
  const UnknownField& field = fields->field(index);
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return std::to_string(field.varint());
    case UnknownField::TYPE_FIXED32:
      return fmt::format("0x{:08x}", field.fixed32());
    case UnknownField::TYPE_FIXED64:
      return fmt::format("0x{:016x}", field.fixed64());
    case UnknownField::TYPE_LENGTH_DELIMITED:
      return Quoted(field.length_delimited(), kTextLimit);
    default:
      return "a group";
  }
}

// Writes down what the differencer finds.
class Collector : public MessageDifferencer::Reporter {
 public:
  Collector(const Message& before, const Message& after, std::vector<FieldChange>* changes)
      : before_(before), after_(after), changes_(changes) {}

  // The differencer passes the messages around the last field; the path is followed from the top.
  void ReportAdded(const Message&, const Message&, const Path& path) override {
    Report(FieldChange::Kind::kAdded, path);
  }
  void ReportDeleted(const Message&, const Message&, const Path& path) override {
    Report(FieldChange::Kind::kRemoved, path);
  }
  void ReportModified(const Message&, const Message&, const Path& path) override {
    // A message that differs is reported behind the fields of it that do.
    const FieldDescriptor* field = path.back().field;
    if (field != nullptr && field->message_type() != nullptr) return;
    Report(FieldChange::Kind::kChanged, path);
  }

 private:
  void Report(FieldChange::Kind kind, const Path& path) {
    const Message* old_parent = &before_;
    const Message* new_parent = &after_;
    FieldChange change{kind, "", "", ""};
    for (std::size_t i = 0; i < path.size(); ++i) {
      const SpecificField& step = path[i];
      if (!change.path.empty()) change.path += '.';
      if (step.field == nullptr) {
        change.path += fmt::format("#{}", step.unknown_field_number);
        if (kind != FieldChange::Kind::kAdded) {
          change.old_value = UnknownText(step.unknown_field_set1, step.unknown_field_index1);
        }
        if (kind != FieldChange::Kind::kRemoved) {
          change.new_value = UnknownText(step.unknown_field_set2, step.unknown_field_index2);
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
          change.old_value = ValueText(*old_parent, *step.field, step.index);
        }
        if (change.kind != FieldChange::Kind::kRemoved) {
          change.new_value = ValueText(*new_parent, *step.field, step.new_index);
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

  // What tells an element of a list from the others: the protocol of a block entry, the index of
  // what has nothing better, nothing for a member of a set.
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

std::string IdentifierText(const Message& zorid) {
  const auto& id = static_cast<const pb::Zorid&>(zorid);
  std::string text;
  for (int i = 0; i < std::min(id.value_size(), kShownValues); ++i) {
    text += fmt::format(i == 0 ? "{}" : ".{}", id.value(i));
  }
  if (id.value_size() > kShownValues) text += "...";
  if (id.value_size() != 4) {
    text += fmt::format("{}({} values)", text.empty() ? "" : " ", id.value_size());
  }
  return text;
}

}  // namespace zorl2_inspect
