// Messages in the forms that the tool writes.
#pragma once

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <string>

#include "tools/text/json_writer.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

enum class MessageForm { kWire, kHex, kJson, kText };

// The form with this name: "wire", "hex", "json" or "text".
MessageForm FormNamed(const std::string& name);

// Writes messages so that the tool can read them again. In a stream each message follows its length
// (wire) or a comment line (hex and text), or is one line (JSON).
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

// The value of a field; `index` is -1 for a singular field.
void WriteJsonValue(const google::protobuf::Message& message,
                    const google::protobuf::FieldDescriptor& field, int index, JsonWriter& writer);

// The value of an unknown field: a number, or the bytes of a text, message or group.
void WriteJsonValue(const google::protobuf::UnknownField& field, JsonWriter& writer);

// The message as one value: names as in the schema, null for an absent field, "0.0.0.7" for an
// identifier of four values. Leaves out unknown fields.
void WriteJson(const google::protobuf::Message& message, JsonWriter& writer);

// The message in the text format.
std::string ToText(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
