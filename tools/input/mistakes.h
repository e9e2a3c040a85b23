// Inputs that are not what the tool reads, but can be turned into it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorl2_inspect {

struct Mistake {
  std::string found;     // "gzip data"
  std::string expected;  // "the bytes in it, from zcat capture.gz"
};

// Returns what the content of the file looks like: compressed data, a packet capture, a frame of
// one, base64, UTF-16, or a message after its length. The caller must have found that the content
// is no message, because some messages begin like these. `file` is "-" for standard input.
std::optional<Mistake> RecogniseMistake(std::string_view content, const std::string& file);

}  // namespace zorl2_inspect
