#include "tools/wire/wire_walker.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "tools/wire/last_occurrences.h"
#include "tools/wire/wire_reader.h"
#include "tools/wire/wire_type.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using FieldKind = WireField::Kind;

bool IsPackedForm(const FieldDescriptor& field, int wire_type) {
  return field.is_packable() && wire_type == kLength;
}

// How often each field of a message has occurred. Several occurrences of a singular message count
// as one.
struct Counts {
  std::vector<int> seen;
  std::map<int, Counts> nested;
};

class Walker {
 public:
  Walker(std::string_view bytes, std::size_t first_offset, WireVisitor& visitor)
      : bytes_(bytes), first_offset_(first_offset), visitor_(visitor) {}

  bool Run(const Descriptor& type) {
    WireField root;
    root.kind = FieldKind::kMessage;
    root.offset = first_offset_;
    root.content = bytes_;
    Counts counts;
    if (Message(&type, bytes_, 0, counts)) visitor_.OnEnd(root, Offset(bytes_.end()));
    return !failed_;
  }

 private:
  // The state of the walk in a message: what is left of it, and which fields have come.
  struct Frame {
    Frame(const Descriptor* message, std::string_view content, int nesting, Counts& all)
        : type(message), reader(content), begin(content.begin()), depth(nesting), counts(all) {
      if (type != nullptr) {
        counts.seen.resize(static_cast<std::size_t>(type->field_count()));
        last = LastOccurrences(content, *type, nesting);
      }
    }

    const Descriptor* type;
    WireReader reader;
    std::string_view::const_iterator begin;
    int depth;
    Counts& counts;
    std::vector<std::size_t> last;  // See LastOccurrences().
  };

  std::size_t Offset(std::string_view::const_iterator place) const {
    return first_offset_ + static_cast<std::size_t>(place - bytes_.begin());
  }
  std::size_t Here(const Frame& frame) const {
    return Offset(frame.begin) + frame.reader.position();
  }

  bool Fail(std::size_t offset, std::string expected, std::string found) {
    failed_ = true;
    visitor_.OnError({0, offset, std::nullopt, path_, std::move(found), std::move(expected)});
    return false;
  }

  bool Message(const Descriptor* type, std::string_view content, int depth, Counts& counts) {
    Frame frame(type, content, depth, counts);
    while (!frame.reader.AtEnd()) {
      if (!Field(frame, nullptr)) return false;
    }
    return true;
  }

  // Walks one field of a message or group. Sets `closing` at the tag that ends a group.
  bool Field(Frame& frame, bool* closing, std::uint32_t group = 0) {
    WireField item;
    item.offset = Here(frame);
    item.parent = frame.type;
    item.depth = frame.depth;
    if (!frame.reader.Tag(&item.number, &item.wire_type)) {
      return Fail(item.offset, "a field's tag", frame.reader.problem());
    }
    item.tag_padding = frame.reader.padding();
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
      WireReader ahead = frame.reader;
      std::uint64_t value = 0;
      const bool unlisted =
          field->enum_type() != nullptr && ahead.Varint(&value) && IsUnlisted(*field, value);
      AppendIndex(frame, *field, unlisted);
    }
  }

  void AppendIndex(Frame& frame, const FieldDescriptor& field, bool unlisted) {
    if (unlisted) {
      path_ += '#' + std::to_string(field.number());
    } else {
      int& count = frame.counts.seen[static_cast<std::size_t>(field.index())];
      path_ += '[' + std::to_string(count++) + ']';
    }
  }

  bool Value(Frame& frame, WireField& item) {
    WireReader& reader = frame.reader;
    switch (item.wire_type) {
      case kVarint:
        if (!reader.Varint(&item.value)) return Fail(Here(frame), "a varint", reader.problem());
        item.value_padding = reader.padding();
        item.overflowed = reader.overflowed();
        return Emit(frame, item);
      case kFixed64:
      case kFixed32: {
        const std::size_t width = item.wire_type == kFixed64 ? 8 : 4;
        if (reader.Fixed(width, &item.value)) return Emit(frame, item);
        return Fail(Here(frame), std::to_string(width) + " bytes", reader.problem());
      }
      case kLength:
        return LengthDelimited(frame, item);
      default:
        return Group(frame, item);
    }
  }

  bool Emit(Frame& frame, WireField& item) {
    item.raw = bytes_.substr(item.offset - first_offset_, Here(frame) - item.offset);
    item.path = path_;
    visitor_.OnField(item);
    return true;
  }

  bool LengthDelimited(Frame& frame, WireField& item) {
    WireReader& reader = frame.reader;
    const std::size_t at = Here(frame);
    std::size_t length = 0;
    if (!reader.Length(&length)) return Fail(at, "a length", reader.problem());
    item.value_padding = reader.padding();
    const FieldDescriptor* field = item.field;
    const bool message = field != nullptr && field->type() == FieldDescriptor::TYPE_MESSAGE;
    if (length > reader.left()) {
      Fail(at, "at most " + std::to_string(reader.left()) + " more bytes",
           "a length of " + std::to_string(length));
      // A capture that was cut off is read up to the cut.
      if (message && item.depth < kDepthLimit) Rest(frame, item);
      return false;
    }
    if (!message && (field == nullptr || !IsPackedForm(*field, item.wire_type))) {
      item.content = reader.Take(length);
      return Emit(frame, item);
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
    // A damaged message or list has its own end, so the walk continues after it.
    const bool whole =
        message ? NestedMessage(frame, item) : Packed(frame, *field, item, content_at);
    item.path = path_;
    if (whole) visitor_.OnEnd(item, content_at + length);
    return true;
  }

  void Rest(Frame& frame, WireField& item) {
    item.kind = FieldKind::kMessage;
    item.content = bytes_.substr(Here(frame) - first_offset_, frame.reader.left());
    Emit(frame, item);
    frame.reader.Take(item.content.size());
    NestedMessage(frame, item);
  }

  bool NestedMessage(Frame& frame, const WireField& item) {
    Counts own;
    Counts& counts = item.field->is_repeated() ? own : frame.counts.nested[item.field->index()];
    return Message(item.field->message_type(), item.content, item.depth + 1, counts);
  }

  bool Packed(Frame& frame, const FieldDescriptor& field, const WireField& list, std::size_t at) {
    WireReader reader(list.content);
    WireField item = list;
    item.kind = FieldKind::kElement;
    item.content = {};
    item.tag_padding = 0;
    ++item.depth;
    const int wire_type = WireTypeOf(field);
    const std::size_t outer = path_.size();
    while (!reader.AtEnd()) {
      path_.resize(outer);
      const std::size_t start = reader.position();
      const std::size_t width = wire_type == kFixed64 ? 8 : 4;
      const bool read =
          wire_type == kVarint ? reader.Varint(&item.value) : reader.Fixed(width, &item.value);
      AppendIndex(frame, field, read && IsUnlisted(field, item.value));
      if (!read) {
        Fail(at + start, "an element", reader.problem());
        path_.resize(outer);
        return false;
      }
      item.value_padding = wire_type == kVarint ? reader.padding() : 0;
      item.overflowed = wire_type == kVarint && reader.overflowed();
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

}  // namespace zorl2_inspect
