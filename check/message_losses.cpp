// What the conversion of a message loses.
#include <google/protobuf/reflection.h>
#include <google/protobuf/unknown_field_set.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "check/check.h"
#include "check/internal/loss_text.h"
#include "check/internal/lossy_fields.h"
#include "check/internal/rules.h"
#include "check/internal/schema.h"

namespace zorl2::check {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::EnumDescriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::UnknownField;
using internal::kOctets;
using internal::LossyField;
using internal::LossyType;
using internal::RecordType;
using internal::Reflected;
using internal::Survival;

// The path from the whole message to a field. It becomes a text only for a loss.
struct Path {
  const Path* parent;
  const FieldDescriptor* field;
  int index;
};

std::string Text(const Path* path) {
  if (path == nullptr) return {};
  std::string text = Text(path->parent);
  if (!text.empty()) text += '.';
  return text + internal::ElementPath(*path->field, path->index);
}

// The values of an identifier in a message of any class.
using Values = google::protobuf::RepeatedFieldRef<std::uint32_t>;

Values ValuesOf(const Message& zorid) {
  const Reflected reflected = internal::Reflect(zorid);
  const FieldDescriptor& field = internal::FieldOf(reflected, pb::Zorid::kValueFieldNumber);
  return reflected.reflection.GetRepeatedFieldRef<std::uint32_t>(zorid, &field);
}

// What the record holds: zero for a malformed identifier.
template <typename AnyValues>
zorid_t Converted(const AnyValues& values) {
  zorid_t id;
  if (values.size() != kOctets) return id;
  for (int i = 0; i < kOctets; ++i) id.octets[i] = static_cast<std::uint8_t>(values.Get(i));
  return id;
}

template <typename AnyValues>
bool IsKept(const AnyValues& values) {
  if (values.size() != kOctets) return false;
  for (int i = 0; i < kOctets; ++i) {
    if (values.Get(i) > 0xff) return false;
  }
  return true;
}

// How a map merges the elements of a signal.
struct MergedStates {
  // For each element the index of the last one for its interface. Empty if the identifiers ascend
  // strictly.
  std::vector<int> last;
  bool keeps_order = true;
};

// `number_of(index)` is the number of the interface that an element is about.
template <typename NumberOf>
MergedStates Merge(int count, const NumberOf& number_of) {
  // The number of the previous identifier, or -1 before the first.
  std::int64_t previous = -1;
  int ascending = 0;
  for (; ascending < count; ++ascending) {
    const std::int64_t number = number_of(ascending);
    if (number <= previous) break;
    previous = number;
  }
  MergedStates merged;
  if (ascending == count) return merged;

  std::vector<std::pair<std::uint32_t, int>> elements;
  elements.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) elements.emplace_back(number_of(i), i);
  std::sort(elements.begin(), elements.end());
  merged.last.resize(elements.size());
  int next_kept = count;
  for (std::size_t i = elements.size(); i-- > 0;) {
    const auto [number, index] = elements[i];
    const bool is_last = i + 1 == elements.size() || elements[i + 1].first != number;
    if (is_last) {
      merged.keeps_order &= index < next_kept;
      next_kept = index;
    }
    merged.last[static_cast<std::size_t>(index)] = next_kept;
  }
  return merged;
}

// The unknown fields of one message, by their numbers.
class UnknownFields {
 public:
  UnknownFields(const Reflected& reflected, const Path* path) : path_(path) {
    const auto& unknown = reflected.reflection.GetUnknownFields(reflected.message);
    if (unknown.empty()) return;
    for (int i = 0; i < unknown.field_count(); ++i) fields_.push_back(&unknown.field(i));
    std::stable_sort(fields_.begin(), fields_.end(),
                     [](const auto* a, const auto* b) { return a->number() < b->number(); });
  }

  // Adds the fields with a lower number that have not been added yet.
  void AddBelow(int number, std::vector<Loss>& losses) {
    while (next_ < fields_.size() && fields_[next_]->number() < number) AddNext(losses);
  }
  void AddRest(std::vector<Loss>& losses) { AddBelow(std::numeric_limits<int>::max(), losses); }

 private:
  void AddNext(std::vector<Loss>& losses) {
    const UnknownField& unknown = *fields_[next_++];
    std::string field = Text(path_);
    if (!field.empty()) field += '.';
    field += "#" + std::to_string(unknown.number());
    losses.push_back(
        {LossKind::kUnknownField, std::move(field), internal::UnknownText(unknown), ""});
  }

  const Path* path_;
  std::vector<const UnknownField*> fields_;
  std::size_t next_ = 0;
};

// Walks a message that converts, in the order of its fields.
class LossFinder {
 public:
  explicit LossFinder(std::vector<Loss>& losses) : losses_(losses) {}

  // A message of any type.
  void Visit(const Message& message) {
    const RecordType type = internal::RecordTypeOf(*message.GetDescriptor());
    if (type == RecordType::kZorid) {
      VisitIdentifier(message, Begin(type, message), nullptr);
    } else {
      VisitRecord(type, message, nullptr);
    }
  }

 private:
  void Add(LossKind kind, const Path* path, std::string before, std::string after) {
    losses_.push_back({kind, Text(path), std::move(before), std::move(after)});
  }

  // Begins with a message that has a native record, and returns its lossy fields.
  const LossyType& Begin(RecordType type, const Message& message) {
    const LossyType& lossy = internal::LossyTypeOf(type);
    is_generated_ = message.GetReflection() == lossy.reflection;
    return lossy;
  }

  // The messages in a message of a generated class are of generated classes.
  Reflected Reflect(const Message& message, const LossyType& lossy) const {
    if (!is_generated_) return internal::Reflect(message);
    return {message, *lossy.reflection, *lossy.descriptor};
  }

  // Calls `use` with the values of an identifier.
  template <typename Use>
  auto UseValues(const Message& zorid, const Use& use) const {
    if (!is_generated_) return use(ValuesOf(zorid));
    // A dynamic_cast takes longer than the use.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-static-cast-downcast)
    return use(static_cast<const pb::Zorid&>(zorid).value());
  }

  // A message of any type but a Zorid.
  void VisitRecord(RecordType type, const Message& message, const Path* path) {
    if (type == RecordType::kNone) return VisitHolder(message, path);
    VisitFields(message, Begin(type, message), path);
  }

  // A message without a native record, which may hold messages that have one.
  void VisitHolder(const Message& message, const Path* path) {
    const Reflected holder = internal::Reflect(message);
    bool holds_record = false;
    for (int i = 0; i < holder.type.field_count(); ++i) {
      const FieldDescriptor& field = *holder.type.field(i);
      if (field.cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
      const RecordType held = internal::RecordTypeOf(*field.message_type());
      // No converter reads an identifier within another message on its own.
      if (held == RecordType::kZorid) continue;
      holds_record |= held != RecordType::kNone;
      const int count = internal::CountOf(holder, field);
      for (int index = 0; index < count; ++index) {
        const Path part{path, &field, index};
        VisitRecord(held, internal::MessageAt(holder, field, index), &part);
      }
    }
    if (holds_record) UnknownFields(holder, path).AddRest(losses_);
  }

  // A message with a native record, or a part of one.
  void VisitFields(const Message& message, const LossyType& lossy, const Path* path) {
    const Reflected reflected = Reflect(message, lossy);
    UnknownFields unknown(reflected, path);
    for (const LossyField& lossy_field : lossy.fields) {
      const FieldDescriptor& field = *reflected.type.field(lossy_field.index);
      unknown.AddBelow(field.number(), losses_);
      // A message that converts has its required fields.
      const int count = field.is_required() ? 1 : internal::CountOf(reflected, field);
      if (lossy_field.survival == Survival::kStates) {
        VisitStates(reflected, field, count, *lossy_field.type, path);
        continue;
      }
      for (int index = 0; index < count; ++index) {
        VisitValue(reflected, lossy_field, {path, &field, index});
      }
      if (count == 0 && field.is_optional()) AddDefault({path, &field, 0});
    }
    unknown.AddRest(losses_);
  }

  void VisitValue(const Reflected& reflected, const LossyField& lossy, const Path& path) {
    const FieldDescriptor& field = *path.field;
    switch (lossy.survival) {
      case Survival::kParts:
        return VisitFields(internal::MessageAt(reflected, field, path.index), *lossy.type, &path);
      case Survival::kIdentifier:
        return VisitIdentifier(internal::MessageAt(reflected, field, path.index), *lossy.type,
                               &path);
      case Survival::kListed:
        return VisitEnumeration(reflected, *lossy.enumeration, path);
      case Survival::kLow16Bits: {
        const std::uint32_t number = reflected.reflection.GetUInt32(reflected.message, &field);
        const auto kept = static_cast<std::uint16_t>(number);
        if (kept == number) return;
        return Add(LossKind::kNarrowed, &path, std::to_string(number), std::to_string(kept));
      }
      default:
        return;
    }
  }

  void VisitEnumeration(const Reflected& reflected, const EnumDescriptor& enumeration,
                        const Path& path) {
    const FieldDescriptor& field = *path.field;
    const int number =
        field.is_repeated()
            ? reflected.reflection.GetRepeatedEnumValue(reflected.message, &field, path.index)
            : reflected.reflection.GetEnumValue(reflected.message, &field);
    if (enumeration.FindValueByNumber(number) != nullptr) return;
    Add(LossKind::kReplaced, &path, std::to_string(number), field.enum_type()->value(0)->name());
  }

  void VisitIdentifier(const Message& message, const LossyType& lossy, const Path* path) {
    if (!UseValues(message, [](const auto& values) { return IsKept(values); })) {
      const Values values = ValuesOf(message);
      losses_.push_back({values.size() == kOctets ? LossKind::kNarrowed : LossKind::kReplaced,
                         path == nullptr ? "value" : Text(path), internal::DottedText(values),
                         internal::DottedText(Converted(values))});
    }
    UnknownFields(Reflect(message, lossy), path).AddRest(losses_);
  }

  // The record has every field.
  void AddDefault(const Path& path) {
    const FieldDescriptor& field = *path.field;
    const bool is_flag = field.cpp_type() == FieldDescriptor::CPPTYPE_BOOL;
    const bool is_identifier = field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE;
    Add(LossKind::kDefaulted, &path, "", is_flag ? "false" : is_identifier ? "0.0.0.0" : "0");
  }

  // The interface that an element of a signal is about.
  zorid_t InterfaceOf(const Message& element, const LossyType& lossy) const {
    const Reflected reflected = Reflect(element, lossy);
    // The number of the identifier is the same in both signals.
    const FieldDescriptor& zorid =
        internal::FieldOf(reflected, pb::ShutStateInfo::kZoridFieldNumber);
    return UseValues(internal::MessageAt(reflected, zorid, 0),
                     [](const auto& values) { return Converted(values); });
  }

  // The record has one state for each interface, the last, in ascending order.
  void VisitStates(const Reflected& signal, const FieldDescriptor& intfs, int count,
                   const LossyType& lossy, const Path* path) {
    const auto interface_of = [&](int index) {
      return InterfaceOf(internal::MessageAt(signal, intfs, index), lossy);
    };
    const auto [last, keeps_order] =
        Merge(count, [&](int index) { return ZoridNumber(interface_of(index)); });
    if (!keeps_order) {
      const Path whole{path, &intfs, internal::kWholeList};
      Add(LossKind::kReplaced, &whole, "not ascending", "ascending");
    }
    for (int index = 0; index < count; ++index) {
      const Path element{path, &intfs, index};
      const int kept = last.empty() ? index : last[static_cast<std::size_t>(index)];
      if (kept == index) {
        VisitFields(internal::MessageAt(signal, intfs, index), lossy, &element);
      } else {
        Add(LossKind::kReplaced, &element, internal::DottedText(interface_of(index)),
            internal::ElementPath(intfs, kept));
      }
    }
  }

  std::vector<Loss>& losses_;
  // Whether the visited message with a native record is of a generated class.
  bool is_generated_ = false;
};

}  // namespace

std::vector<Loss> FindLosses(const Message& message) {
  if (internal::Fails(Check(message))) return {};
  std::vector<Loss> losses;
  LossFinder(losses).Visit(message);
  const auto by_kind = [](const Loss& a, const Loss& b) { return a.kind < b.kind; };
  std::stable_sort(losses.begin(), losses.end(), by_kind);
  return losses;
}

std::vector<Loss> FindLosses(const pb::Zorid& message) {
  return FindLosses(static_cast<const Message&>(message));
}

std::vector<Loss> FindLosses(const pb::IntfEntry& message) {
  return FindLosses(static_cast<const Message&>(message));
}

std::vector<Loss> FindLosses(const pb::ShutStateSync& message) {
  return FindLosses(static_cast<const Message&>(message));
}

std::vector<Loss> FindLosses(const pb::BlockStateSync& message) {
  return FindLosses(static_cast<const Message&>(message));
}

std::vector<Loss> FindLosses(const pb::InformationClient& message) {
  return FindLosses(static_cast<const Message&>(message));
}

std::vector<Loss> FindLosses(const pb::LagMemberOperationProto& message) {
  return FindLosses(static_cast<const Message&>(message));
}

}  // namespace zorl2::check
