#include "tools/wire/last_occurrences.h"

#include "tools/wire/wire_reader.h"
#include "tools/wire/wire_type.h"

namespace zorl2_inspect {
namespace {

// Skips one value. Returns false at damage, which the walk itself reports.
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

}  // namespace

std::vector<std::size_t> LastOccurrences(std::string_view bytes,
                                         const google::protobuf::Descriptor& type, int depth) {
  std::vector<std::size_t> last(static_cast<std::size_t>(type.field_count()), kNowhere);
  WireReader reader(bytes);
  while (!reader.AtEnd()) {
    const std::size_t start = reader.position();
    std::uint32_t number = 0;
    int wire_type = 0;
    if (!reader.Tag(&number, &wire_type)) break;
    if (!SkipValue(reader, number, wire_type, depth)) break;
    const auto* field = type.FindFieldByNumber(static_cast<int>(number));
    if (field != nullptr && WireTypeOf(*field) == wire_type) {
      last[static_cast<std::size_t>(field->index())] = start;
    }
  }
  return last;
}

}  // namespace zorl2_inspect
