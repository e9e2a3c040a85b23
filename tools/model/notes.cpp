#include "tools/model/notes.h"

#include <fmt/format.h>

#include <cstdint>
#include <utility>

#include "tools/model/check_text.h"
#include "tools/model/field_text.h"
#include "tools/model/native_types.h"
#include "tools/wire/wire_type.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2::check::Verdict;

constexpr std::uint64_t kLow32 = 0xffffffff;

Note NoteOf(const Loss& loss) {
  switch (loss.kind) {
    case LossKind::kReplaced:
      return {Note::Kind::kReplaced, fmt::format("{} becomes {}", loss.before, AfterText(loss))};
    case LossKind::kNarrowed:
      return {Note::Kind::kNarrowed, fmt::format("{} becomes {}", loss.before, loss.after)};
    case LossKind::kUnknownField:
      return {Note::Kind::kDropped, LossKindName(loss.kind)};
    case LossKind::kDefaulted:
      break;
  }
  return {Note::Kind::kDefaulted, fmt::format("becomes {}", loss.after)};
}

// The path of the message that contains the field.
std::string_view MessagePath(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : path.substr(0, dot);
}

// Whether the parser keeps the number among the unknown fields.
bool IsUnlisted(const WireField& field) {
  if (field.field == nullptr || field.field->cpp_type() != FieldDescriptor::CPPTYPE_ENUM ||
      field.kind == WireField::Kind::kPacked) {
    return false;
  }
  const auto number = static_cast<std::int32_t>(field.value);
  return field.field->enum_type()->FindValueByNumber(number) == nullptr;
}

}  // namespace

const char* NoteName(Note::Kind kind) {
  static const char* const kNames[] = {"replaced",  "narrowed", "dropped",
                                       "defaulted", "rejected", "merged"};
  return kNames[static_cast<int>(kind)];
}

std::vector<Note> ParserNotes(const WireField& field) {
  std::vector<Note> notes;
  if (field.field == nullptr) return notes;
  if (field.later != kNowhere && field.kind == WireField::Kind::kMessage) {
    notes.push_back(
        {Note::Kind::kMerged, fmt::format("with the same field at {:#x}", field.later)});
  } else if (field.later != kNowhere) {
    notes.push_back(
        {Note::Kind::kReplaced, fmt::format("by the same field at {:#x}", field.later)});
  }
  if (field.wire_type != kVarint && field.kind != WireField::Kind::kElement) return notes;
  if (field.field->cpp_type() == FieldDescriptor::CPPTYPE_BOOL && field.value > 1) {
    notes.push_back({Note::Kind::kNarrowed, fmt::format("{} is parsed as true", field.value)});
  } else if (field.field->cpp_type() == FieldDescriptor::CPPTYPE_UINT32 && field.value > kLow32) {
    notes.push_back({Note::Kind::kNarrowed,
                     fmt::format("the parser keeps the low 32 bits, {}", field.value & kLow32)});
  }
  return notes;
}

CheckNotes::CheckNotes(const Message& message) : verdict_(zorl2::check::Check(message)) {
  if (Converts(verdict_)) {
    AddLosses("", message);
    return;
  }
  AddRejection("", verdict_);
  ForEachNative(message, [&](const std::string& path, const NativeType&, const Message& part) {
    const Verdict verdict = zorl2::check::Check(part);
    if (Converts(verdict)) {
      AddLosses(path, part);
    } else if (Join(path, verdict.field) != verdict_.field) {
      AddRejection(path, verdict);
    }
  });
  // Of each part the verdict names the first missing field only.
  std::vector<std::string> missing;
  message.FindInitializationErrors(&missing);
  for (const std::string& path : missing) {
    if (notes_.count(path) == 0) notes_.insert({path, {Note::Kind::kRejected, "missing"}});
  }
}

void CheckNotes::AddRejection(const std::string& path, const Verdict& verdict) {
  notes_.insert({Join(path, verdict.field), {Note::Kind::kRejected, RejectionText(verdict)}});
}

void CheckNotes::AddLosses(const std::string& path, const Message& message) {
  for (const Loss& loss : zorl2::check::FindLosses(message)) {
    notes_.insert({Join(path, loss.field), NoteOf(loss)});
  }
}

std::vector<Note> CheckNotes::Take(const WireField& field) {
  std::vector<Note> notes;
  // What comes again is complete only with its last occurrence.
  if (field.parent == nullptr || field.later != kNowhere) return notes;
  const auto take = [&](const std::string& path, bool all) {
    auto [note, end] = notes_.equal_range(path);
    while (note != end && (all || notes.empty())) {
      notes.push_back(std::move(note->second));
      note = notes_.erase(note);
    }
  };
  const bool unlisted = IsUnlisted(field);
  if (unlisted || field.field == nullptr) {
    // One note for each occurrence, in their order.
    take(Join(MessagePath(field.path), fmt::format("#{}", field.number)), false);
  }
  if (field.field != nullptr) take(std::string(field.path), true);
  return notes;
}

std::vector<CheckNotes::Absent> CheckNotes::TakeAbsent(std::string_view message_path) {
  std::vector<Absent> absent;
  for (auto note = notes_.lower_bound(std::string(message_path)); note != notes_.end();) {
    if (note->first.substr(0, message_path.size()) != message_path) break;
    if (MessagePath(note->first) != message_path && !message_path.empty()) {
      ++note;
      continue;
    }
    absent.push_back({note->first, std::move(note->second)});
    note = notes_.erase(note);
  }
  return absent;
}

}  // namespace zorl2_inspect
