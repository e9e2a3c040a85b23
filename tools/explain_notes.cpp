#include "tools/explain_notes.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "interface_entry.pb.h"
#include "lag.pb.h"
#include "native/zorid.h"
#include "tools/native_numbers.h"
#include "tools/plain_text.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::EnumValueDescriptor;
using google::protobuf::FieldDescriptor;

constexpr std::uint64_t kLow32 = 0xffffffff;
constexpr std::size_t kNotedText = 64;

bool IsZorid(const Descriptor* type) { return type == pb::Zorid::descriptor(); }

bool IsSignal(const Descriptor* type) {
  return type == pb::ShutStateSync::descriptor() || type == pb::BlockStateSync::descriptor();
}

// Collects the values of an identifier ahead of the walk, so that its first line can show it whole.
class IdentifierReader : public WireVisitor {
 public:
  void OnField(const WireField& field) override {
    if (field.field == nullptr || field.kind == WireField::Kind::kPacked) return;
    if (count_ < values_.size()) values_[count_] = static_cast<std::uint8_t>(field.value);
    ++count_;
  }
  void OnEnd(const WireField&, std::size_t) override {}
  void OnError(const WireError&) override {}

  std::size_t count() const { return count_; }
  std::uint32_t number() const {
    zorid_t id;
    for (std::size_t i = 0; i < values_.size(); ++i) id.octets[i] = values_[i];
    return ZoridNumber(id);
  }
  std::string Dotted() const {
    return fmt::format("{}.{}.{}.{}", values_[0], values_[1], values_[2], values_[3]);
  }

 private:
  std::array<std::uint8_t, 4> values_ = {};
  std::size_t count_ = 0;
};

// What stands natively where an optional field of a converted message is absent; null where that
// has no meaning.
const char* DefaultOf(const FieldDescriptor& field, const Descriptor* converted) {
  static const auto* const kParent = pb::IntfEntry::descriptor()->FindFieldByName("parent");
  static const auto* const kPort =
      pb::GeneralInfo::descriptor()->FindFieldByName("bridge_port_number");
  if (converted == nullptr) return nullptr;
  if (&field == kParent) return "0.0.0.0, like a parent of that identifier";
  if (&field == kPort) return "0, like a bridge port of that number";
  if (field.containing_type() != pb::LagMemberOperationProto::descriptor()) return nullptr;
  return field.cpp_type() == FieldDescriptor::CPPTYPE_BOOL ? "false" : "0";
}

std::string Plain(const WireField& field) {
  switch (field.wire_type) {
    case 0:
      return std::to_string(field.value);
    case 1:
      return fmt::format("0x{:016x}", field.value);
    case 5:
      return fmt::format("0x{:08x}", field.value);
    case 2:
      return Quoted(field.content, kNotedText);
    default:
      return "group";
  }
}

}  // namespace

const char* NoteName(Note::Kind kind) {
  static const char* const kNames[] = {"narrowed", "defaulted", "dropped", "refused", "merged"};
  return kNames[static_cast<int>(kind)];
}

Annotator::Annotator(const Descriptor& root) {
  Frame frame;
  frame.type = &root;
  frame.converted = *NativeRecordName(root) != '\0' ? &root : nullptr;
  frame.own = std::make_unique<Seen>();
  frame.seen = frame.own.get();
  frames_.push_back(std::move(frame));
}

void Annotator::Enter(const WireField& field) {
  Frame frame;
  if (field.kind == WireField::Kind::kMessage) {
    frame.type = field.field->message_type();
    const bool whole = *ConverterName(*frame.type) != '\0' && !IsZorid(frame.type);
    frame.converted = whole ? frame.type : frames_.back().converted;
    if (field.field->is_repeated()) {
      frame.own = std::make_unique<Seen>();
      frame.seen = frame.own.get();
    } else {
      std::unique_ptr<Seen>& part = frames_.back().seen->parts[field.field];
      if (part == nullptr) part = std::make_unique<Seen>();
      frame.seen = part.get();
    }
  }
  // What the pointer points to moves with its owner.
  // cppcheck-suppress danglingLifetime
  frames_.push_back(std::move(frame));
}

std::string Annotator::Read(const WireField& field, std::vector<Note>* notes) {
  // The walk leaves a damaged message without an end; its frames go here. The elements of a packed
  // list stand one level deeper than the message that they belong to.
  const bool element = field.kind == WireField::Kind::kElement;
  frames_.resize(static_cast<std::size_t>(field.depth) + (element ? 0 : 1));

  if (field.field == nullptr) {
    std::string value = Unknown(field, notes);
    if (field.kind == WireField::Kind::kGroup) Enter(field);
    return value;
  }
  if (field.later != kNowhere) {
    if (field.kind == WireField::Kind::kMessage) {
      notes->push_back(
          {Note::Kind::kMerged, fmt::format("with the same field at {:#x}", field.later)});
    } else {
      notes->push_back(
          {Note::Kind::kDropped, fmt::format("replaced by the same field at {:#x}", field.later)});
    }
  }
  if (field.kind == WireField::Kind::kPacked) return fmt::format("{} bytes", field.content.size());
  if (field.kind != WireField::Kind::kMessage) return Leaf(field, notes);

  frames_.back().seen->fields.insert(field.field);
  Enter(field);
  return IsZorid(frames_.back().type) ? Identifier(field, notes)
                                      : fmt::format("{} bytes", field.content.size());
}

std::string Annotator::Identifier(const WireField& field, std::vector<Note>* notes) {
  IdentifierReader reader;
  WalkWire(field.content, *frames_.back().type, 0, reader);
  Frame& frame = frames_.back();
  frame.seen->identifier_values += reader.count();
  const std::uint64_t count = frame.seen->identifier_values;
  const bool whole = count == 4 && reader.count() == 4;
  std::string value = whole ? reader.Dotted() : fmt::format("{} values", reader.count());
  if (frame.converted == nullptr || field.later != kNowhere) return value;

  const bool signal = IsSignal(frame.converted);
  if (count != 4) {
    frame.malformed = true;
    const std::string reason = fmt::format("{} values where an identifier has 4", count);
    if (frame.converted == pb::IntfEntry::descriptor()) {
      notes->push_back({Note::Kind::kDefaulted, reason + ": becomes 0.0.0.0"});
    } else if (signal) {
      notes->push_back({Note::Kind::kRefused, reason + ": the converter would end the process"});
    } else {
      notes->push_back({Note::Kind::kRefused, reason + ": the conversion returns false"});
    }
  } else if (signal && whole) {
    const auto [place, added] = signalled_.insert({reader.number(), field.offset});
    if (!added) {
      notes->push_back({Note::Kind::kDropped, fmt::format("the state given for {} at {:#x}: the "
                                                          "later element wins",
                                                          value, place->second)});
      place->second = field.offset;
    }
  }
  return value;
}

std::string Annotator::Leaf(const WireField& field, std::vector<Note>* notes) {
  const FieldDescriptor& known = *field.field;
  Frame& frame = frames_.back();
  if (known.cpp_type() == FieldDescriptor::CPPTYPE_ENUM) return Enumeration(field, notes);
  frame.seen->fields.insert(&known);
  switch (known.cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      if (field.value > 1) {
        notes->push_back({Note::Kind::kNarrowed, fmt::format("{} is read as true", field.value)});
      }
      return field.value != 0 ? "true" : "false";
    case FieldDescriptor::CPPTYPE_STRING:
      return Quoted(field.content, kNotedText);
    case FieldDescriptor::CPPTYPE_INT32:
      return std::to_string(static_cast<std::int32_t>(field.value));
    case FieldDescriptor::CPPTYPE_UINT32:
      break;
    default:
      return std::to_string(field.value);
  }
  std::uint64_t value = field.value;
  if (value > kLow32) {
    notes->push_back({Note::Kind::kNarrowed, fmt::format("the parser keeps the low 32 bits: {} "
                                                         "becomes {}",
                                                         value, value & kLow32)});
    value &= kLow32;
  }
  const bool octet = IsZorid(frame.type) && Converts() && !frame.malformed;
  const bool port = known.name() == "bridge_port_number";
  const std::uint64_t mask = octet ? 0xff : port ? 0xffff : kLow32;
  if (value > mask) {
    notes->push_back(
        {Note::Kind::kNarrowed, fmt::format("the converter keeps the low {} bits: {} becomes {}",
                                            octet ? 8 : 16, value, value & mask)});
  }
  return std::to_string(value);
}

std::string Annotator::Enumeration(const WireField& field, std::vector<Note>* notes) {
  const FieldDescriptor& known = *field.field;
  const auto number = static_cast<std::int32_t>(field.value);
  const EnumValueDescriptor* value = known.enum_type()->FindValueByNumber(number);
  if (value == nullptr) {
    notes->push_back(
        {Note::Kind::kDropped, fmt::format("{} is no number of {}: it becomes an unknown field",
                                           number, known.enum_type()->name())});
    return std::to_string(number);
  }
  frames_.back().seen->fields.insert(&known);
  if (IsSignal(known.containing_type()) && field.later == kNowhere &&
      (number == pb::L1_PROTO || number == pb::L2_PROTO)) {
    notes->push_back({Note::Kind::kRefused, fmt::format("a state signal for {} makes the converter "
                                                        "throw std::out_of_range",
                                                        value->name())});
  }
  const auto native = NativeNumber(*value);
  if (native && *native != number) {
    return fmt::format("{} ({}, native {})", value->name(), number, *native);
  }
  return fmt::format("{} ({})", value->name(), number);
}

std::string Annotator::Unknown(const WireField& field, std::vector<Note>* notes) const {
  const Frame& frame = frames_.back();
  std::string text;
  if (frame.type == nullptr) {
    text = "part of an unknown group";
  } else if (field.mismatched != nullptr) {
    text = fmt::format("{} has wire type {}, not {}: it becomes an unknown field",
                       field.mismatched->name(), WireTypeName(WireTypeOf(*field.mismatched)),
                       WireTypeName(field.wire_type));
  } else {
    text = fmt::format("{} has no field {}: it becomes an unknown field", frame.type->name(),
                       field.number);
  }
  notes->push_back({Note::Kind::kDropped, std::move(text)});
  return Plain(field);
}

void Annotator::End(const WireField& container, const Absent& absent) {
  if (container.kind != WireField::Kind::kMessage) return;
  const bool root = container.path.empty();
  frames_.resize(static_cast<std::size_t>(container.depth) + (root ? 1 : 2));
  // A part that comes again is complete only with its last occurrence.
  if (container.later != kNowhere) return;
  const Frame& frame = frames_.back();
  for (int i = 0; i < frame.type->field_count(); ++i) {
    const FieldDescriptor& field = *frame.type->field(i);
    if (field.is_repeated() || frame.seen->fields.count(&field) != 0) continue;
    std::string path(container.path);
    if (!path.empty()) path += '.';
    path += field.name();
    if (field.is_required()) {
      absent(field, path, {Note::Kind::kRefused, "required: the message is not complete"});
    } else if (IsZorid(field.message_type()) &&
               frame.type == pb::LagMemberOperationProto::descriptor()) {
      absent(field, path, {Note::Kind::kRefused, "absent: the conversion returns false"});
    } else if (const char* stands = DefaultOf(field, frame.converted)) {
      absent(field, path, {Note::Kind::kDefaulted, fmt::format("becomes {}", stands)});
    }
  }
  // The root may be an identifier itself.
  if (root && IsZorid(frame.type)) {
    IdentifierReader reader;
    WalkWire(container.content, *frame.type, 0, reader);
    if (reader.count() != 4) {
      absent(*frame.type->field(0), "value",
             {Note::Kind::kRefused, fmt::format("{} values where an identifier has 4: the "
                                                "conversion returns false",
                                                reader.count())});
    }
  }
}

}  // namespace zorl2_inspect
