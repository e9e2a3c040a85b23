// Messages in the forms that the tool writes.
#pragma once

#include <google/protobuf/message.h>

#include <string>

#include "tools/text/json_writer.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

enum class MessageForm { kWire, kHex, kJson, kText };

// The form with this name: "wire", "hex", "json" or "text".
MessageForm FormNamed(const std::string& name);

// Writes messages so that the tool can read them again. The messages of a stream have their length
// before them (wire), a line each (JSON) or a line of comment before them (hex and text).
class MessageWriter {
 public:
  MessageWriter(Output& out, MessageForm form, bool of_stream);

  void Write(const google::protobuf::Message& message);

 private:
  Output& out_;
  MessageForm form_;
  bool of_stream_;
  JsonWriter json_;
};

// The message as one value. Names as in the schema; 64-bit numbers are texts, as in the runtime's
// JSON. Leaves out unknown fields.
void WriteJson(const google::protobuf::Message& message, JsonWriter& writer);

// The message in the text format.
std::string ToText(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
