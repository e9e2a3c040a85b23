// Walks bytes in the wire format against a schema, field by field, without building a message. The
// walk continues after most kinds of damage.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/text/error.h"
#include "tools/wire/last_occurrences.h"

namespace zorl2_inspect {

// A field, or one value of a packed list.
struct WireField {
  enum class Kind {
    kLeaf,     // a value
    kElement,  // one value of a packed list; it has no tag of its own
    kMessage,  // the tag and length of a message of the schema; its fields follow
    kPacked,   // the tag and length of a packed list; its elements follow
    kGroup,    // the tag that opens a group; the schema has no groups
  };

  Kind kind = Kind::kLeaf;
  // The message that contains the field; null inside a group.
  const google::protobuf::Descriptor* parent = nullptr;
  // Null when the schema has no such field, or has it with another wire type.
  const google::protobuf::FieldDescriptor* field = nullptr;
  // The schema's field of this number whose wire type differs from the one found.
  const google::protobuf::FieldDescriptor* mismatched = nullptr;
  std::uint32_t number = 0;
  int wire_type = 0;
  int depth = 0;
  std::size_t offset = 0;
  // All bytes of a leaf or element; only the tag and length of the other kinds.
  std::string_view raw;
  // The value of a varint or fixed-width field, not decoded any further.
  std::uint64_t value = 0;
  // How many bytes more than needed the varint of the tag has, and that of the value or length.
  std::size_t tag_padding = 0;
  std::size_t value_padding = 0;
  // Whether the varint has bits above the 64th.
  bool overflowed = false;
  // What the length counts: text, a message, a packed list.
  std::string_view content;
  // The offset of the last occurrence of the same singular field in the same message, if this is
  // an earlier one. A later value replaces an earlier one; a later message is merged into it.
  std::size_t later = kNowhere;
  // Such as intfEntry[3].zorid.value[0], with the indices that the parsed message has. A field that
  // the schema does not have is #number; an unlisted value of a list, which the parser keeps among
  // the unknown fields, is shutdownProtos#7.
  std::string_view path;
};

// Called in the order of the bytes.
class WireVisitor {
 public:
  virtual ~WireVisitor() = default;
  virtual void OnField(const WireField& field) = 0;
  // Called after the last field of a complete message, packed list or group. The outermost message
  // has an empty path; `end` is the offset after the container.
  virtual void OnEnd(const WireField& container, std::size_t end) = 0;
  // Why the runtime rejects the bytes, with offset and path.
  virtual void OnError(const Problem& problem) = 0;
};

// Walks the fields of a message of the type. After damage inside a nested message the walk
// continues after that message; a message that is cut off is walked up to its end; other damage
// ends the walk. Returns whether there was no damage. Needs the same memory for any bytes.
// `first_offset` is added to every offset.
bool WalkWire(std::string_view bytes, const google::protobuf::Descriptor& type,
              std::size_t first_offset, WireVisitor& visitor);

}  // namespace zorl2_inspect
