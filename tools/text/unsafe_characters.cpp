#include "tools/text/unsafe_characters.h"

#include <google/protobuf/stubs/common.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace zorl2_inspect {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

// Controls, format characters, line separators and characters that take no place, in ascending
// order.
constexpr Range kUnsafe[] = {
    {0x0000, 0x001f},   {0x007f, 0x009f},   {0x00ad, 0x00ad},   {0x034f, 0x034f},
    {0x0600, 0x0605},   {0x061c, 0x061c},   {0x06dd, 0x06dd},   {0x070f, 0x070f},
    {0x0890, 0x0891},   {0x08e2, 0x08e2},   {0x115f, 0x1160},   {0x17b4, 0x17b5},
    {0x180b, 0x180f},   {0x200b, 0x200f},   {0x2028, 0x202e},   {0x2060, 0x206f},
    {0x3164, 0x3164},   {0xfe00, 0xfe0f},   {0xfeff, 0xfeff},   {0xffa0, 0xffa0},
    {0xfff0, 0xfffb},   {0x110bd, 0x110bd}, {0x110cd, 0x110cd}, {0x13430, 0x1343f},
    {0x1bca0, 0x1bca3}, {0x1d173, 0x1d17a}, {0xe0000, 0xe0fff},
};

// How many bytes a character has according to its first one.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0xc2) return 1;
  if (lead < 0xe0) return 2;
  return lead < 0xf0 ? 3 : 4;
}

std::uint32_t CodePoint(std::string_view sequence) {
  const auto lead = static_cast<unsigned char>(sequence[0]);
  std::uint32_t point = sequence.size() == 1 ? lead : lead & (0x7fU >> sequence.size());
  for (const char c : sequence.substr(1))
    point = point << 6 | (static_cast<unsigned char>(c) & 0x3f);
  return point;
}

}  // namespace

std::size_t SafeCharacter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return lead >= 0x20 && lead != 0x7f ? 1 : 0;
  const std::string_view sequence = text.substr(0, SequenceLength(lead));
  if (!google::protobuf::internal::IsStructurallyValidUTF8(sequence.data(),
                                                           static_cast<int>(sequence.size()))) {
    return 0;
  }
  const std::uint32_t point = CodePoint(sequence);
  const auto* const range = std::find_if(std::begin(kUnsafe), std::end(kUnsafe),
                                         [point](const Range& one) { return point <= one.last; });
  const bool unsafe = range != std::end(kUnsafe) && point >= range->first;
  return unsafe ? 0 : sequence.size();
}

}  // namespace zorl2_inspect
