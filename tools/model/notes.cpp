#include "tools/model/notes.h"

#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <set>
#include <utility>

#include "tools/model/any_value.h"
#include "tools/model/check_text.h"
#include "tools/model/field_path.h"
#include "tools/model/field_text.h"
#include "tools/model/native_types.h"
#include "tools/wire/wire_find.h"
#include "tools/wire/wire_type.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2::check::Verdict;

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

bool IsVarint(const WireField& field) {
  return field.kind == WireField::Kind::kElement ||
         (field.kind == WireField::Kind::kLeaf && field.wire_type == kVarint);
}

// What the parser makes of a varint of the field; the value itself if it fits.
std::uint64_t Parsed(const FieldDescriptor& field, std::uint64_t value) {
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      return value != 0 ? 1 : 0;
    case FieldDescriptor::CPPTYPE_UINT32:
      return static_cast<std::uint32_t>(value);
    case FieldDescriptor::CPPTYPE_INT32:
    case FieldDescriptor::CPPTYPE_ENUM:
      // A negative number has its sign in all of the 64 bits.
      return static_cast<std::uint64_t>(
          static_cast<std::int64_t>(static_cast<std::int32_t>(value)));
    default:
      return value;
  }
}

std::string ParsedText(const FieldDescriptor& field, std::uint64_t value) {
  if (field.cpp_type() == FieldDescriptor::CPPTYPE_BOOL) return "true";
  return std::to_string(static_cast<std::int64_t>(Parsed(field, value)));
}

void NotePadding(const WireField& field, std::vector<Note>& notes) {
  const auto add = [&notes](const char* what, std::size_t bytes) {
    if (bytes == 0) return;
    notes.push_back({Note::Kind::kPadded, fmt::format("the {} has {} byte{} more than it needs",
                                                      what, bytes, bytes == 1 ? "" : "s")});
  };
  add("tag", field.tag_padding);
  add(IsVarint(field) ? "value" : "length", field.value_padding);
}

}  // namespace

const char* NoteName(Note::Kind kind) {
  static const char* const kNames[] = {"replaced", "narrowed", "dropped",     "defaulted",
                                       "rejected", "merged",   "non-minimal", "malformed"};
  return kNames[static_cast<int>(kind)];
}

std::vector<Note> ParserNotes(const WireField& field) {
  std::vector<Note> notes;
  NotePadding(field, notes);
  if (IsVarint(field) && field.overflowed) {
    notes.push_back({Note::Kind::kNarrowed, "the parser drops the bits above the 64th"});
  }
  if (field.field == nullptr) return notes;
  if (field.later != kNowhere && field.kind == WireField::Kind::kMessage) {
    notes.push_back(
        {Note::Kind::kMerged, fmt::format("with the same field at {:#x}", field.later)});
  } else if (field.later != kNowhere) {
    notes.push_back(
        {Note::Kind::kReplaced, fmt::format("by the same field at {:#x}", field.later)});
  }
  if (!IsVarint(field) || Parsed(*field.field, field.value) == field.value) return notes;
  notes.push_back({Note::Kind::kNarrowed, fmt::format("{} is parsed as {}", field.value,
                                                      ParsedText(*field.field, field.value))});
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
  // The verdict names only the first missing field of each part.
  std::vector<std::string> missing;
  message.FindInitializationErrors(&missing);
  std::set<std::string, std::less<>> incomplete;
  for (const std::string& path : missing) incomplete.emplace(MessagePath(path));
  for (const std::string& path : incomplete) AddMissing(path, MessageAt(message, path));
}

void CheckNotes::AddMissing(const std::string& path, const Message& message) {
  const std::unique_ptr<Message> complete(message.New());
  complete->CopyFrom(message);
  for (;;) {
    const Verdict verdict = zorl2::check::Check(*complete);
    // What a message lacks itself comes before what the messages in it lack.
    const auto* field = message.GetDescriptor()->FindFieldByName(verdict.field);
    if (!IsIncomplete(verdict) || field == nullptr) return;
    if (notes_.count(Join(path, verdict.field)) == 0) AddRejection(path, verdict);
    AddAnyValue(*complete, *field);
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
  // A field that occurs several times is complete only with its last occurrence.
  if (field.parent == nullptr || field.later != kNowhere) return notes;
  const auto take = [&](const std::string& path, bool all) {
    auto [note, end] = notes_.equal_range(path);
    while (note != end && (all || notes.empty())) {
      notes.push_back(std::move(note->second));
      note = notes_.erase(note);
    }
  };
  const bool unlisted =
      field.field != nullptr && IsVarint(field) && IsUnlisted(*field.field, field.value);
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
