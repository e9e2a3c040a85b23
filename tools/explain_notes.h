// What becomes of the fields of a capture: what the parser and the converters narrow, default, drop
// or refuse. Fed by the wire walker in the order of the bytes.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/wire_walker.h"

namespace zorl2_inspect {

struct Note {
  enum class Kind {
    kNarrowed,   // bits are lost
    kDefaulted,  // another value takes the place
    kDropped,    // nothing of it is left in the native record
    kRefused,    // the whole message is refused
    kMerged,     // nothing is lost; two occurrences make one
    kCount,
  };
  Kind kind;
  std::string text;
};

const char* NoteName(Note::Kind kind);

class Annotator {
 public:
  // Called for a field that is missing where its absence means something.
  using Absent = std::function<void(const google::protobuf::FieldDescriptor& field,
                                    const std::string& path, const Note& note)>;

  explicit Annotator(const google::protobuf::Descriptor& root);

  // The value as a person reads it, and what becomes of it.
  std::string Read(const WireField& field, std::vector<Note>* notes);

  // What is missing from a message whose last field was read.
  void End(const WireField& container, const Absent& absent);

 private:
  // What was seen of a message; several occurrences of a singular message share one.
  struct Seen {
    std::set<const google::protobuf::FieldDescriptor*> fields;
    std::uint64_t identifier_values = 0;
    std::map<const google::protobuf::FieldDescriptor*, std::unique_ptr<Seen>> parts;
  };
  struct Frame {
    const google::protobuf::Descriptor* type = nullptr;
    // The message around this place that a converter takes as a whole, or null.
    const google::protobuf::Descriptor* converted = nullptr;
    Seen* seen = nullptr;
    std::unique_ptr<Seen> own;
    // The identifier that this message is has another count than four.
    bool malformed = false;
  };

  void Enter(const WireField& field);
  std::string Identifier(const WireField& field, std::vector<Note>* notes);
  std::string Leaf(const WireField& field, std::vector<Note>* notes);
  std::string Enumeration(const WireField& field, std::vector<Note>* notes);
  std::string Unknown(const WireField& field, std::vector<Note>* notes) const;
  bool Converts() const { return frames_.back().converted != nullptr; }

  std::vector<Frame> frames_;
  // Where a state signal names each interface, to tell when a later element replaces an earlier.
  std::unordered_map<std::uint32_t, std::size_t> signalled_;
};

}  // namespace zorl2_inspect
