// Where results go.
#pragma once

#include <google/protobuf/message.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace zorl2_inspect {

// A file, or standard output for "-". What is written to a file stands there only when Finish has
// returned; an error before leaves an older file as it was.
class Output {
 public:
  explicit Output(std::string file);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  std::FILE* stream() const { return stream_; }
  void Write(std::string_view text);
  // Throws InputError when not everything could be written.
  void Finish();

 private:
  std::string file_;
  std::string temporary_;
  std::FILE* stream_;
};

enum class MessageForm { kWire, kHex, kJson, kText };

// The message in the form. A record of a stream is written so that the stream can be read again:
// wire bytes behind their length, JSON on one line, hexadecimal text and text form behind a line of
// comment.
std::string MessageIn(MessageForm form, const google::protobuf::Message& message, bool of_stream);

}  // namespace zorl2_inspect
