// What becomes of the fields of a message, for the view that shows its bytes.
#pragma once

#include <google/protobuf/message.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "check/check.h"
#include "tools/wire/wire_walker.h"

namespace zorl2_inspect {

struct Note {
  enum class Kind {
    kReplaced,   // Another value takes its place.
    kNarrowed,   // Bits are lost.
    kDropped,    // Nothing of it remains.
    kDefaulted,  // It is absent and gets its default.
    kRejected,   // The conversion fails.
    kMerged,     // Two occurrences make one message; nothing is lost.
    kPadded,     // A varint has more bytes than it needs; nothing is lost.
    kMalformed,  // The parser fails.
    kCount,
  };

  Kind kind;
  std::string text;
};

const char* NoteName(Note::Kind kind);

// What the parser does to the field: replaces it, merges it, drops its high bits; and whether its
// varints are padded.
std::vector<Note> ParserNotes(const WireField& field);

// The findings of zorl2::check in a message, by field. Each note is returned once.
class CheckNotes {
 public:
  explicit CheckNotes(const google::protobuf::Message& message);

  // Of the whole message.
  const zorl2::check::Verdict& verdict() const { return verdict_; }

  // The notes of a field that the walk has reached.
  std::vector<Note> Take(const WireField& field);

  struct Absent {
    std::string path;
    Note note;
  };
  // The remaining notes of the message at the path. The walk must have passed the message.
  std::vector<Absent> TakeAbsent(std::string_view message_path);

 private:
  void AddRejection(const std::string& path, const zorl2::check::Verdict& verdict);
  // The required fields that the message at the path does not have.
  void AddMissing(const std::string& path, const google::protobuf::Message& message);
  void AddLosses(const std::string& path, const google::protobuf::Message& message);

  zorl2::check::Verdict verdict_;
  // Unknown fields and unlisted values are under "typeInfo.#9".
  std::multimap<std::string, Note> notes_;
};

}  // namespace zorl2_inspect
