#include "tools/wire_walker.h"

#include <vector>

#include "tools/wire_reader.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using FieldKind = WireField::Kind;

bool IsPackedForm(const FieldDescriptor& field, int wire_type) {
  return field.is_packable() && wire_type == kLength;
}

// Reads over one value; false where the walk itself will report the reason.
bool SkipValue(WireReader& reader, std::uint32_t number, int wire_type, int depth) {
  std::uint64_t value = 0;
  std::size_t length = 0;
  switch (wire_type) {
    case kVarint:
      return reader.Varint(&value);
    case kFixed64:
      return reader.Fixed(8, &value);
    case kFixed32:
      return reader.Fixed(4, &value);
    case kLength:
      if (!reader.Length(&length) || length > reader.left()) return false;
      reader.Take(length);
      return true;
    case kStartGroup:
      if (depth >= kDepthLimit) return false;
      while (true) {
        std::uint32_t inner = 0;
        int inner_type = 0;
        if (!reader.Tag(&inner, &inner_type)) return false;
        if (inner_type == kEndGroup) return inner == number;
        if (!SkipValue(reader, inner, inner_type, depth + 1)) return false;
      }
    default:
      return false;
  }
}

class Walker {
 public:
  Walker(std::string_view bytes, std::size_t first_offset, WireVisitor& visitor)
      : bytes_(bytes), first_offset_(first_offset), visitor_(visitor) {}

  bool Run(const Descriptor& type) {
    WireField root;
    root.kind = FieldKind::kMessage;
    root.offset = first_offset_;
    root.content = bytes_;
    if (Message(&type, bytes_, 0)) visitor_.OnEnd(root, Offset(bytes_.end()));
    return !failed_;
  }

 private:
  // Where a message stands in the walk: what is left of it, how often each field came.
  struct Frame {
    Frame(const Descriptor* message, std::string_view content, int nesting)
        : type(message), reader(content), begin(content.begin()), depth(nesting) {
      if (type != nullptr) {
        counts.resize(static_cast<std::size_t>(type->field_count()));
        last.resize(counts.size(), kNowhere);
      }
    }

    const Descriptor* type;
    WireReader reader;
    std::string_view::const_iterator begin;
    int depth;
    std::vector<int> counts;
    // Where the last occurrence of each field starts, relative to begin.
    std::vector<std::size_t> last;
  };

  std::size_t Offset(std::string_view::const_iterator place) const {
    return first_offset_ + static_cast<std::size_t>(place - bytes_.begin());
  }
  std::size_t Here(const Frame& frame) const {
    return Offset(frame.begin) + frame.reader.position();
  }

  bool Fail(std::size_t offset, std::string expected, std::string found) {
    failed_ = true;
    visitor_.OnError({offset, path_, std::move(expected), std::move(found)});
    return false;
  }

  // Finds where each field of the message comes last, so that the walk can say of an earlier value
  // what becomes of it.
  static void FindLast(Frame& frame, std::string_view content) {
    WireReader reader(content);
    while (!reader.AtEnd()) {
      const std::size_t start = reader.position();
      std::uint32_t number = 0;
      int wire_type = 0;
      if (!reader.Tag(&number, &wire_type)) return;
      if (!SkipValue(reader, number, wire_type, frame.depth)) return;
      const FieldDescriptor* field = frame.type->FindFieldByNumber(static_cast<int>(number));
      if (field != nullptr && WireTypeOf(*field) == wire_type) {
        frame.last[static_cast<std::size_t>(field->index())] = start;
      }
    }
  }

  bool Message(const Descriptor* type, std::string_view content, int depth) {
    Frame frame(type, content, depth);
    FindLast(frame, content);
    while (!frame.reader.AtEnd()) {
      if (!Field(frame, nullptr)) return false;
    }
    return true;
  }

  // One field of a message or group. In a group, whose end is a tag of its own, closing becomes
  // true when that tag was read.
  bool Field(Frame& frame, bool* closing, std::uint32_t group = 0) {
    WireField item;
    item.offset = Here(frame);
    item.parent = frame.type;
    item.depth = frame.depth;
    if (!frame.reader.Tag(&item.number, &item.wire_type)) {
      return Fail(item.offset, "a field's tag", frame.reader.problem());
    }
    if (item.wire_type == kEndGroup) {
      if (closing != nullptr && item.number == group) {
        *closing = true;
        return true;
      }
      return Fail(item.offset, "a field", "the end of a group that was not opened");
    }
    Name(frame, item);
    const std::size_t outer = path_.size();
    AppendToPath(frame, item);
    const bool going_on = Value(frame, item);
    path_.resize(outer);
    return going_on;
  }

  static void Name(const Frame& frame, WireField& item) {
    if (frame.type == nullptr) return;
    const FieldDescriptor* field = frame.type->FindFieldByNumber(static_cast<int>(item.number));
    if (field == nullptr) return;
    const bool fits = WireTypeOf(*field) == item.wire_type || IsPackedForm(*field, item.wire_type);
    (fits ? item.field : item.mismatched) = field;
  }

  void AppendToPath(Frame& frame, WireField& item) {
    if (!path_.empty()) path_ += '.';
    const FieldDescriptor* field = item.field;
    if (field == nullptr) {
      path_ += item.mismatched != nullptr ? item.mismatched->name() : "";
      path_ += '#';
      path_ += std::to_string(item.number);
      return;
    }
    path_ += field->name();
    const auto place = static_cast<std::size_t>(field->index());
    if (!field->is_repeated()) {
      const std::size_t last = frame.last[place];
      if (last != kNowhere && Offset(frame.begin) + last > item.offset) {
        item.later = Offset(frame.begin) + last;
      }
    } else if (!IsPackedForm(*field, item.wire_type)) {
      path_ += '[' + std::to_string(frame.counts[place]++) + ']';
    }
  }

  bool Value(Frame& frame, WireField& item) {
    WireReader& reader = frame.reader;
    switch (item.wire_type) {
      case kVarint:
        if (!reader.Varint(&item.value)) return Fail(Here(frame), "a varint", reader.problem());
        return Leaf(frame, item);
      case kFixed64:
        if (!reader.Fixed(8, &item.value)) return Fail(Here(frame), "8 bytes", reader.problem());
        return Leaf(frame, item);
      case kFixed32:
        if (!reader.Fixed(4, &item.value)) return Fail(Here(frame), "4 bytes", reader.problem());
        return Leaf(frame, item);
      case kLength:
        return LengthDelimited(frame, item);
      default:
        return Group(frame, item);
    }
  }

  bool Leaf(Frame& frame, WireField& item) {
    Emit(frame, item);
    return true;
  }

  void Emit(Frame& frame, WireField& item) {
    item.raw = bytes_.substr(item.offset - first_offset_, Here(frame) - item.offset);
    item.path = path_;
    visitor_.OnField(item);
  }

  bool LengthDelimited(Frame& frame, WireField& item) {
    WireReader& reader = frame.reader;
    const std::size_t at = Here(frame);
    std::size_t length = 0;
    if (!reader.Length(&length)) return Fail(at, "a length", reader.problem());
    const FieldDescriptor* field = item.field;
    const bool message = field != nullptr && field->type() == FieldDescriptor::TYPE_MESSAGE;
    if (length > reader.left()) {
      Fail(at, "at most " + std::to_string(reader.left()) + " more bytes",
           "a length of " + std::to_string(length));
      // A capture that was cut is worth reading up to the cut.
      if (message && item.depth < kDepthLimit) Rest(frame, item);
      return false;
    }
    const bool packed = field != nullptr && IsPackedForm(*field, item.wire_type);
    if (!message && !packed) {
      item.content = reader.Take(length);
      return Leaf(frame, item);
    }
    item.kind = message ? FieldKind::kMessage : FieldKind::kPacked;
    const std::size_t content_at = Here(frame);
    item.content = bytes_.substr(content_at - first_offset_, length);
    Emit(frame, item);
    reader.Take(length);
    if (message && item.depth >= kDepthLimit) {
      Fail(item.offset, "at most 100 levels of nesting", "one more");
      return true;
    }
    // A damaged message or list has its own end, so the walk goes on behind it.
    const bool whole = message ? Message(field->message_type(), item.content, item.depth + 1)
                               : Packed(frame, *field, item, content_at);
    item.path = path_;
    if (whole) visitor_.OnEnd(item, content_at + length);
    return true;
  }

  void Rest(Frame& frame, WireField& item) {
    item.kind = FieldKind::kMessage;
    item.content = bytes_.substr(Here(frame) - first_offset_, frame.reader.left());
    Emit(frame, item);
    frame.reader.Take(item.content.size());
    Message(item.field->message_type(), item.content, item.depth + 1);
  }

  bool Packed(Frame& frame, const FieldDescriptor& field, const WireField& list, std::size_t at) {
    WireReader reader(list.content);
    WireField item = list;
    item.kind = FieldKind::kElement;
    item.content = {};
    ++item.depth;
    const int wire_type = WireTypeOf(field);
    int& count = frame.counts[static_cast<std::size_t>(field.index())];
    const std::size_t outer = path_.size();
    while (!reader.AtEnd()) {
      path_.resize(outer);
      path_ += '[' + std::to_string(count) + ']';
      const std::size_t start = reader.position();
      const bool read = wire_type == kVarint
                            ? reader.Varint(&item.value)
                            : reader.Fixed(wire_type == kFixed64 ? 8 : 4, &item.value);
      if (!read) {
        Fail(at + start, "an element", reader.problem());
        path_.resize(outer);
        return false;
      }
      ++count;
      item.offset = at + start;
      item.raw = list.content.substr(start, reader.position() - start);
      item.path = path_;
      visitor_.OnField(item);
    }
    path_.resize(outer);
    return true;
  }

  bool Group(Frame& frame, WireField& item) {
    item.kind = FieldKind::kGroup;
    Emit(frame, item);
    if (item.depth >= kDepthLimit) {
      return Fail(item.offset, "at most 100 levels of nesting", "one more");
    }
    const Descriptor* outer_type = frame.type;
    frame.type = nullptr;
    ++frame.depth;
    bool closed = false;
    while (!closed) {
      if (frame.reader.AtEnd()) {
        return Fail(Here(frame), "the end of group " + std::to_string(item.number),
                    "the end of the bytes");
      }
      if (!Field(frame, &closed, item.number)) return false;
    }
    --frame.depth;
    frame.type = outer_type;
    item.path = path_;
    visitor_.OnEnd(item, Here(frame));
    return true;
  }

  std::string_view bytes_;
  std::size_t first_offset_;
  WireVisitor& visitor_;
  std::string path_;
  bool failed_ = false;
};

}  // namespace

bool WalkWire(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
              WireVisitor& visitor) {
  return Walker(bytes, first_offset, visitor).Run(type);
}

std::optional<WireError> FirstWireError(std::string_view bytes, const Descriptor& type) {
  class First : public WireVisitor {
   public:
    void OnField(const WireField&) override {}
    void OnEnd(const WireField&, std::size_t) override {}
    void OnError(const WireError& error) override {
      if (!found.has_value()) found = error;
    }
    std::optional<WireError> found;
  };
  First first;
  WalkWire(bytes, type, 0, first);
  return first.found;
}

int WireTypeOf(const FieldDescriptor& field) {
  switch (field.type()) {
    case FieldDescriptor::TYPE_DOUBLE:
    case FieldDescriptor::TYPE_FIXED64:
    case FieldDescriptor::TYPE_SFIXED64:
      return kFixed64;
    case FieldDescriptor::TYPE_FLOAT:
    case FieldDescriptor::TYPE_FIXED32:
    case FieldDescriptor::TYPE_SFIXED32:
      return kFixed32;
    case FieldDescriptor::TYPE_STRING:
    case FieldDescriptor::TYPE_BYTES:
    case FieldDescriptor::TYPE_MESSAGE:
      return kLength;
    case FieldDescriptor::TYPE_GROUP:
      return kStartGroup;
    default:
      return kVarint;
  }
}

const char* WireTypeName(int wire_type) {
  static const char* const kNames[] = {"varint",      "64-bit",    "length-delimited",
                                       "start group", "end group", "32-bit"};
  return wire_type >= 0 && wire_type <= kFixed32 ? kNames[wire_type] : "none";
}

}  // namespace zorl2_inspect
