#include "tools/output.h"

#include <fmt/format.h>
#include <google/protobuf/io/coded_stream.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "tools/error.h"
#include "tools/plain_text.h"
#include "tools/text_forms.h"

namespace zorl2_inspect {

Output::Output(std::string file) : file_(std::move(file)), stream_(stdout) {
  if (file_ == "-") return;
  // A device or a pipe is written to directly.
  const bool plain = access(file_.c_str(), F_OK) != 0 || file_.compare(0, 5, "/dev/") != 0;
  if (plain) temporary_ = fmt::format("{}.{}.part", file_, getpid());
  stream_ = std::fopen(plain ? temporary_.c_str() : file_.c_str(), "wb");
  if (stream_ == nullptr) {
    throw InputError(file_, "", fmt::format("cannot write: {}", std::strerror(errno)));
  }
}

Output::~Output() {
  if (stream_ == nullptr || stream_ == stdout) return;
  std::fclose(stream_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void Output::Write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stream_); }

void Output::Finish() {
  const char* const name = file_ == "-" ? "standard output" : file_.c_str();
  bool good = std::fflush(stream_) == 0 && std::ferror(stream_) == 0;
  if (stream_ != stdout) {
    good = std::fclose(stream_) == 0 && good;
    stream_ = nullptr;
    if (good && !temporary_.empty()) good = std::rename(temporary_.c_str(), file_.c_str()) == 0;
  }
  if (good) return;
  const int error = errno;
  if (!temporary_.empty()) unlink(temporary_.c_str());
  throw InputError(name, "", fmt::format("cannot write: {}", std::strerror(error)));
}

std::string MessageIn(MessageForm form, const google::protobuf::Message& message, bool of_stream) {
  switch (form) {
    case MessageForm::kJson:
      return ToJson(message, !of_stream);
    case MessageForm::kText:
      return (of_stream ? fmt::format("# {}\n", message.GetDescriptor()->name()) : std::string()) +
             ToText(message);
    case MessageForm::kHex:
      return (of_stream ? fmt::format("# {}\n", message.GetDescriptor()->name()) : std::string()) +
             Hex(message.SerializePartialAsString()) + '\n';
    case MessageForm::kWire:
      break;
  }
  std::string bytes = message.SerializePartialAsString();
  if (!of_stream) return bytes;
  std::uint8_t length[10];
  std::uint8_t* const end =
      google::protobuf::io::CodedOutputStream::WriteVarint64ToArray(bytes.size(), length);
  return std::string(length, end) + bytes;
}

}  // namespace zorl2_inspect
