// Walks bytes in the wire format against a schema, field by field, without building a message: the
// view of a capture that survives whatever is wrong with it.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zorl2_inspect {

inline constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// How deep the runtime lets messages and groups nest; it refuses the next level.
inline constexpr int kDepthLimit = 100;

// What stands at one place of the bytes.
struct WireField {
  enum class Kind {
    kLeaf,     // a value
    kElement,  // one value of a packed list; has no tag of its own
    kMessage,  // the tag and length of a message of the schema; its fields follow
    kPacked,   // the tag and length of a packed list; its elements follow
    kGroup,    // the tag that opens a group; the schema has none, so nothing in it is known
  };

  Kind kind = Kind::kLeaf;
  // The message that the field stands in; null inside a group.
  const google::protobuf::Descriptor* parent = nullptr;
  // Null when the schema has no such field, or has it with another wire type.
  const google::protobuf::FieldDescriptor* field = nullptr;
  // The schema's field of this number whose wire type differs from the one found.
  const google::protobuf::FieldDescriptor* mismatched = nullptr;
  std::uint32_t number = 0;
  int wire_type = 0;
  int depth = 0;
  std::size_t offset = 0;
  // All bytes of a leaf or element, the tag and length of the others.
  std::string_view raw;
  // The number of a varint or fixed-width value, undecoded otherwise.
  std::uint64_t value = 0;
  // What the length counts: text, a message, a packed list.
  std::string_view content;
  // Where the next occurrence of the same singular field stands in the same message: a later value
  // replaces an earlier one, a later message is merged into it.
  std::size_t later = kNowhere;
  // The field path, such as intfEntry[3].zorid.value[0]; a field that is not known is #number.
  std::string_view path;
};

// Why the runtime refuses the bytes.
struct WireError {
  std::size_t offset = 0;
  std::string path;
  std::string expected;
  std::string found;
};

// Called in the order of the bytes.
class WireVisitor {
 public:
  virtual ~WireVisitor() = default;
  virtual void OnField(const WireField& field) = 0;
  // After the last field of a message, packed list or group that was whole. The outermost message
  // is reported with an empty path; end is the offset behind it.
  virtual void OnEnd(const WireField& container, std::size_t end) = 0;
  virtual void OnError(const WireError& error) = 0;
};

// Walks the fields of a message of the given type. After an error inside a message with a length
// the walk goes on behind that message; a message that was cut is walked up to the cut; elsewhere
// an error ends the walk. True when there was no error. Memory
// does not depend on the bytes; first_offset is added to every offset.
bool WalkWire(std::string_view bytes, const google::protobuf::Descriptor& type,
              std::size_t first_offset, WireVisitor& visitor);

// The first thing that the runtime refuses in a message of the given type; nothing when it takes
// it.
std::optional<WireError> FirstWireError(std::string_view bytes,
                                        const google::protobuf::Descriptor& type);

// The wire type that the schema gives a field, and its name.
int WireTypeOf(const google::protobuf::FieldDescriptor& field);
const char* WireTypeName(int wire_type);

}  // namespace zorl2_inspect
