// What the conversion of a message loses.
#include <google/protobuf/reflection.h>
#include <google/protobuf/unknown_field_set.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "check/check.h"
#include "check/internal/loss_text.h"
#include "check/internal/rules.h"
#include "check/internal/schema.h"

namespace zorl2::check {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;
using internal::kOctets;
using internal::RecordType;

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

template <typename Generated>
bool IsType(const Descriptor& type) {
  const Descriptor& generated = *Generated::descriptor();
  return &type == &generated || type.full_name() == generated.full_name();
}

// The values of an identifier in a message of any class.
using Values = google::protobuf::RepeatedFieldRef<std::uint32_t>;

Values ValuesOf(const Message& zorid) {
  const FieldDescriptor* field =
      zorid.GetDescriptor()->FindFieldByNumber(pb::Zorid::kValueFieldNumber);
  return zorid.GetReflection()->GetRepeatedFieldRef<std::uint32_t>(zorid, field);
}

// What the record holds: zero for a malformed identifier.
zorid_t Converted(const Values& values) {
  zorid_t id;
  if (values.size() != kOctets) return id;
  for (int i = 0; i < kOctets; ++i) id.octets[i] = static_cast<std::uint8_t>(values.Get(i));
  return id;
}

bool IsKept(const Values& values) {
  if (values.size() != kOctets) return false;
  for (int i = 0; i < kOctets; ++i) {
    if (values.Get(i) > 0xff) return false;
  }
  return true;
}

// The interface that an element of a signal is about.
zorid_t InterfaceOf(const Message& signal, const FieldDescriptor& intfs, int index) {
  const Message& element = internal::MessageAt(signal, intfs, index);
  // The number of the identifier is the same in both signals.
  const FieldDescriptor& zorid =
      *element.GetDescriptor()->FindFieldByNumber(pb::ShutStateInfo::kZoridFieldNumber);
  return Converted(ValuesOf(internal::MessageAt(element, zorid, 0)));
}

// How a map merges the elements of a signal.
struct MergedStates {
  // For each element the index of the last one for its interface. Empty if the identifiers ascend
  // strictly.
  std::vector<int> last;
  bool keeps_order = true;
};

MergedStates Merge(const Message& signal, const FieldDescriptor& intfs) {
  const int count = internal::CountOf(signal, intfs);
  // The number of the previous identifier, or -1 before the first.
  std::int64_t previous = -1;
  int ascending = 0;
  for (; ascending < count; ++ascending) {
    const std::int64_t number = ZoridNumber(InterfaceOf(signal, intfs, ascending));
    if (number <= previous) break;
    previous = number;
  }
  MergedStates merged;
  if (ascending == count) return merged;

  std::vector<std::pair<std::uint32_t, int>> elements;
  elements.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    elements.emplace_back(ZoridNumber(InterfaceOf(signal, intfs, i)), i);
  }
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
  UnknownFields(const Message& message, const Path* path) : path_(path) {
    const auto& unknown = message.GetReflection()->GetUnknownFields(message);
    if (unknown.empty()) return;
    for (int i = 0; i < unknown.field_count(); ++i) fields_.push_back(&unknown.field(i));
    std::stable_sort(fields_.begin(), fields_.end(),
                     [](const auto* a, const auto* b) { return a->number() < b->number(); });
  }

  // Adds the fields with a lower number that have not been added yet.
  void AddBelow(int number, std::vector<Loss>& losses) {
    for (; next_ < fields_.size() && fields_[next_]->number() < number; ++next_) {
      std::string field = Text(path_);
      if (!field.empty()) field += '.';
      field += "#" + std::to_string(fields_[next_]->number());
      losses.push_back(
          {LossKind::kUnknownField, std::move(field), internal::UnknownText(*fields_[next_]), ""});
    }
  }
  void AddRest(std::vector<Loss>& losses) { AddBelow(std::numeric_limits<int>::max(), losses); }

 private:
  const Path* path_;
  std::vector<const UnknownField*> fields_;
  std::size_t next_ = 0;
};

// Walks a message that converts, in the order of its fields.
class LossFinder {
 public:
  explicit LossFinder(std::vector<Loss>& losses) : losses_(losses) {}

  // A message of any type.
  void Visit(const Message& message, const Path* path) {
    switch (internal::RecordTypeOf(*message.GetDescriptor())) {
      case RecordType::kNone:
        return VisitHolder(message, path);
      case RecordType::kZorid:
        // No converter reads an identifier directly in a message without a native record.
        if (path == nullptr) VisitIdentifier(message, nullptr);
        return;
      case RecordType::kShutStateSync:
      case RecordType::kBlockStateSync:
        return VisitFields(message, path, true);
      default:
        return VisitFields(message, path, false);
    }
  }

 private:
  void Add(LossKind kind, const Path* path, std::string before, std::string after) {
    losses_.push_back({kind, Text(path), std::move(before), std::move(after)});
  }

  // A message without a native record, which may hold messages that have one.
  void VisitHolder(const Message& message, const Path* path) {
    const Descriptor& type = *message.GetDescriptor();
    bool holds_record = false;
    for (int i = 0; i < type.field_count(); ++i) {
      const FieldDescriptor& field = *type.field(i);
      if (field.cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
      const RecordType held = internal::RecordTypeOf(*field.message_type());
      holds_record |= held != RecordType::kNone && held != RecordType::kZorid;
      const int count = internal::CountOf(message, field);
      for (int index = 0; index < count; ++index) {
        const Path part{path, &field, index};
        Visit(internal::MessageAt(message, field, index), &part);
      }
    }
    if (holds_record) UnknownFields(message, path).AddRest(losses_);
  }

  // A message with a native record, or a part of one.
  void VisitFields(const Message& message, const Path* path, bool is_signal) {
    const Descriptor& type = *message.GetDescriptor();
    UnknownFields unknown(message, path);
    for (int i = 0; i < type.field_count(); ++i) {
      const FieldDescriptor& field = *type.field(i);
      unknown.AddBelow(field.number(), losses_);
      if (is_signal && field.is_repeated()) {
        VisitStates(message, field, path);
        continue;
      }
      const int count = internal::CountOf(message, field);
      for (int index = 0; index < count; ++index) VisitValue(message, {path, &field, index});
      if (count == 0 && field.is_optional()) AddDefault({path, &field, 0});
    }
    unknown.AddRest(losses_);
  }

  void VisitValue(const Message& message, const Path& path) {
    const FieldDescriptor& field = *path.field;
    const Reflection& reflection = *message.GetReflection();
    if (field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
      const Message& part = internal::MessageAt(message, field, path.index);
      if (IsType<pb::Zorid>(*part.GetDescriptor())) {
        VisitIdentifier(part, &path);
      } else {
        VisitFields(part, &path, false);
      }
    } else if (field.cpp_type() == FieldDescriptor::CPPTYPE_ENUM) {
      const int number = field.is_repeated()
                             ? reflection.GetRepeatedEnumValue(message, &field, path.index)
                             : reflection.GetEnumValue(message, &field);
      if (field.enum_type()->FindValueByNumber(number) != nullptr) return;
      // Only the protocols and the block states get here: their value 0 replaces all unlisted ones.
      Add(LossKind::kReplaced, &path, std::to_string(number), field.enum_type()->value(0)->name());
    } else if (IsType<pb::GeneralInfo>(*field.containing_type()) &&
               field.number() == pb::GeneralInfo::kBridgePortNumberFieldNumber) {
      const std::uint32_t number = reflection.GetUInt32(message, &field);
      const auto kept = static_cast<std::uint16_t>(number);
      if (kept == number) return;
      Add(LossKind::kNarrowed, &path, std::to_string(number), std::to_string(kept));
    }
  }

  void VisitIdentifier(const Message& message, const Path* path) {
    const Values values = ValuesOf(message);
    if (!IsKept(values)) {
      losses_.push_back({values.size() == kOctets ? LossKind::kNarrowed : LossKind::kReplaced,
                         path == nullptr ? "value" : Text(path), internal::DottedText(values),
                         internal::DottedText(Converted(values))});
    }
    UnknownFields(message, path).AddRest(losses_);
  }

  // The record has every field.
  void AddDefault(const Path& path) {
    const FieldDescriptor& field = *path.field;
    const bool is_flag = field.cpp_type() == FieldDescriptor::CPPTYPE_BOOL;
    const bool is_identifier = field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE;
    Add(LossKind::kDefaulted, &path, "", is_flag ? "false" : is_identifier ? "0.0.0.0" : "0");
  }

  // The record has one state for each interface, the last, in ascending order.
  void VisitStates(const Message& signal, const FieldDescriptor& intfs, const Path* path) {
    const auto [last, keeps_order] = Merge(signal, intfs);
    if (!keeps_order) {
      const Path whole{path, &intfs, internal::kWholeList};
      Add(LossKind::kReplaced, &whole, "not ascending", "ascending");
    }
    const int count = internal::CountOf(signal, intfs);
    for (int index = 0; index < count; ++index) {
      const Path element{path, &intfs, index};
      const int kept = last.empty() ? index : last[static_cast<std::size_t>(index)];
      if (kept == index) {
        VisitFields(internal::MessageAt(signal, intfs, index), &element, false);
      } else {
        Add(LossKind::kReplaced, &element, internal::DottedText(InterfaceOf(signal, intfs, index)),
            internal::ElementPath(intfs, kept));
      }
    }
  }

  std::vector<Loss>& losses_;
};

}  // namespace

std::vector<Loss> FindLosses(const Message& message) {
  if (internal::Fails(Check(message))) return {};
  std::vector<Loss> losses;
  LossFinder(losses).Visit(message, nullptr);
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
