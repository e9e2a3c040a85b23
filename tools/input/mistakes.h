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

// What the content of the file looks like: compressed data, a packet capture, a frame of one,
// base64, UTF-16, or a message after its length. Call this for content that is no message only: a
// few messages begin like the other things. `file` is "-" for standard input.
std::optional<Mistake> RecogniseMistake(std::string_view content, const std::string& file);

}  // namespace zorl2_inspect
