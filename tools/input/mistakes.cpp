#include "tools/input/mistakes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdint>

#include "tools/input/input_form.h"
#include "tools/input/type_inference.h"
#include "tools/wire/wire_reader.h"

namespace zorl2_inspect {
namespace {

using namespace std::string_view_literals;

struct Signature {
  std::string_view bytes;
  const char* found;
  const char* command;
};

constexpr const char* kPayloads =
    "the payload, from tshark -T fields -e udp.payload (or tcp.payload, or data) -r";

constexpr Signature kSignatures[] = {
    {"\x1f\x8b\x08"sv, "gzip data", "the bytes in it, from zcat"},
    {"\x28\xb5\x2f\xfd"sv, "zstd data", "the bytes in it, from zstd -dc"},
    {"\xfd\x37zXZ\0"sv, "xz data", "the bytes in it, from xz -dc"},
    {"BZh"sv, "bzip2 data", "the bytes in it, from bzip2 -dc"},
    {"\xa1\xb2\xc3\xd4"sv, "a packet capture (pcap)", kPayloads},
    {"\xd4\xc3\xb2\xa1"sv, "a packet capture (pcap)", kPayloads},
    {"\xa1\xb2\x3c\x4d"sv, "a packet capture (pcap)", kPayloads},
    {"\x4d\x3c\xb2\xa1"sv, "a packet capture (pcap)", kPayloads},
    {"\x0a\x0d\x0d\x0a"sv, "a packet capture (pcapng)", kPayloads},
};

bool StartsWith(std::string_view content, std::string_view beginning) {
  return content.substr(0, beginning.size()) == beginning;
}

bool IsText(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return (byte >= 0x20 && byte < 0x7f) || byte == '\n' || byte == '\r' || byte == '\t';
}

// Whether every second byte is zero, beginning with this one, and the others are text.
bool IsUtf16(std::string_view content, std::size_t zeros) {
  if (content.size() < 4) return false;
  const std::size_t seen = std::min<std::size_t>(content.size(), 64) & ~std::size_t{1};
  for (std::size_t i = 0; i < seen; ++i) {
    if (i % 2 == zeros ? content[i] != '\0' : !IsText(content[i])) return false;
  }
  return true;
}

// An Ethernet frame with an IP packet in it.
bool IsFrame(std::string_view content) {
  constexpr std::size_t kType = 12;
  if (content.size() < kType + 2 + 20) return false;
  const std::string_view type = content.substr(kType, 2);
  const int version = static_cast<unsigned char>(content[kType + 2]) >> 4;
  return (type == "\x08\x00"sv && version == 4) || (type == "\x86\xdd"sv && version == 6);
}

bool IsFlawless(std::string_view bytes) {
  return !bytes.empty() && InferTypeFromWire(bytes).flawless;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  std::size_t padding = 0;
  std::size_t digits = 0;
  for (const char character : text) {
    if (character == '\n' || character == '\r') continue;
    ++digits;
    if (character == '=') {
      ++padding;
      continue;
    }
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t digit = kDigits.find(character);
    if (digit == kDigits.npos || padding > 0) return std::nullopt;
    bits = (bits << 6 | static_cast<std::uint32_t>(digit)) & 0xffffff;
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xff);
  }
  if (digits % 4 != 0 || padding > 2) return std::nullopt;
  return bytes;
}

struct Prefix {
  const char* name;
  std::size_t flags;  // Bytes before the length.
  bool big_endian;
};

constexpr Prefix kPrefixes[] = {{"a 4-byte big-endian length", 0, true},
                                {"a 4-byte little-endian length", 0, false},
                                {"a flag and a 4-byte length, as gRPC has them", 1, true}};

// The length of the first record, if such records fill the content.
std::optional<std::size_t> FirstLength(std::string_view content, const Prefix& prefix) {
  std::optional<std::size_t> first;
  while (!content.empty()) {
    if (content.size() < prefix.flags + 4) return std::nullopt;
    if (prefix.flags > 0 && content[0] != '\0') return std::nullopt;
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      const std::size_t at = prefix.flags + (prefix.big_endian ? i : 3 - i);
      length = length << 8 | static_cast<unsigned char>(content[at]);
    }
    content.remove_prefix(prefix.flags + 4);
    if (length > content.size()) return std::nullopt;
    if (!first) first = length;
    content.remove_prefix(length);
  }
  return first;
}

std::optional<Mistake> RecognisePrefix(std::string_view content, const std::string& file) {
  for (const Prefix& prefix : kPrefixes) {
    const auto length = FirstLength(content, prefix);
    const std::size_t size = prefix.flags + 4;
    if (!length || !IsFlawless(content.substr(size, *length))) continue;
    const std::string cut =
        *length + size == content.size() ? std::string() : fmt::format(" | head -c {}", *length);
    return Mistake{fmt::format("a message after {}", prefix.name),
                   fmt::format("the message, from tail -c +{}{}{}", size + 1, file, cut)};
  }
  return std::nullopt;
}

}  // namespace

std::optional<Mistake> RecogniseMistake(std::string_view content, const std::string& file) {
  const std::string name = file == "-" ? "" : " " + file;
  for (const Signature& signature : kSignatures) {
    if (StartsWith(content, signature.bytes)) {
      const bool needs_name = signature.command == kPayloads && name.empty();
      return Mistake{signature.found, signature.command + (needs_name ? " -" : name)};
    }
  }
  for (const std::size_t zeros : {std::size_t{0}, std::size_t{1}}) {
    const bool mark = StartsWith(content, zeros == 0 ? "\xfe\xff" : "\xff\xfe");
    if (!IsUtf16(content.substr(mark ? 2 : 0), zeros)) continue;
    return Mistake{"UTF-16 text", fmt::format("UTF-8, from iconv -f UTF-16{} -t UTF-8{}",
                                              mark         ? ""
                                              : zeros == 0 ? "BE"
                                                           : "LE",
                                              name)};
  }
  if (IsFrame(content) || StartsWith(content, "Frame (")) {
    return Mistake{"whole frames, as tshark -x prints them",
                   "the payload, from tshark -T fields -e udp.payload (or tcp.payload, or data)"};
  }
  const std::optional<std::string> decoded = DecodeBase64(content);
  if (decoded && IsFlawless(*decoded)) {
    return Mistake{"base64 text", "the bytes in it, from base64 -d" + name};
  }
  if (LooksDelimited(content)) {
    WireReader reader(content);
    std::size_t length = 0;
    if (reader.Length(&length) && IsFlawless(reader.Take(length))) {
      return Mistake{"messages after their lengths", "a stream only with --delimited"};
    }
  }
  return RecognisePrefix(content, name);
}

}  // namespace zorl2_inspect
