#include "tools/model/message_forms.h"

#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/text_format.h>

#include <map>

#include "tools/model/field_text.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;
using zorl2::protobuf::Zorid;

// Whether an identifier is written as "0.0.0.7": only with the four values that such a text has.
bool IsDotted(const Message& message) {
  return message.GetDescriptor() == Zorid::descriptor() &&
         static_cast<const Zorid&>(message).value_size() == 4;
}

// Writes texts so that a terminal can show them and the tool can read them again.
class SafeTexts : public google::protobuf::TextFormat::FastFieldValuePrinter {
 public:
  void PrintString(const std::string& text,
                   google::protobuf::TextFormat::BaseTextGenerator* out) const override {
    out->PrintString(Quoted(text));
  }
};

}  // namespace

void WriteJsonValue(const Message& message, const FieldDescriptor& field, int index,
                    JsonWriter& writer) {
  const Reflection& get = *message.GetReflection();
  const bool one = index < 0;
  std::string scratch;
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_MESSAGE: {
      const Message& inner =
          one ? get.GetMessage(message, &field) : get.GetRepeatedMessage(message, &field, index);
      return IsDotted(inner) ? writer.Value(DottedText(static_cast<const Zorid&>(inner)))
                             : WriteJson(inner, writer);
    }
    case FieldDescriptor::CPPTYPE_BOOL:
      return writer.Value(one ? get.GetBool(message, &field)
                              : get.GetRepeatedBool(message, &field, index));
    case FieldDescriptor::CPPTYPE_ENUM:
      return writer.Value(
          (one ? get.GetEnum(message, &field) : get.GetRepeatedEnum(message, &field, index))
              ->name());
    case FieldDescriptor::CPPTYPE_STRING:
      return writer.Value(one ? get.GetStringReference(message, &field, &scratch)
                              : get.GetRepeatedStringReference(message, &field, index, &scratch));
    case FieldDescriptor::CPPTYPE_INT32:
      return writer.Value(one ? get.GetInt32(message, &field)
                              : get.GetRepeatedInt32(message, &field, index));
    case FieldDescriptor::CPPTYPE_UINT32:
      return writer.Value(one ? get.GetUInt32(message, &field)
                              : get.GetRepeatedUInt32(message, &field, index));
    default:
      // No field of the schema has another type.
      return writer.Value(one ? get.GetUInt64(message, &field)
                              : get.GetRepeatedUInt64(message, &field, index));
  }
}

void WriteJsonValue(const UnknownField& field, JsonWriter& writer) {
  std::string bytes;
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return writer.Value(field.varint());
    case UnknownField::TYPE_FIXED32:
      return writer.Value(field.fixed32());
    case UnknownField::TYPE_FIXED64:
      return writer.Value(field.fixed64());
    case UnknownField::TYPE_GROUP:
      field.group().SerializeToString(&bytes);
      return writer.Value(bytes);
    default:
      return writer.Value(field.length_delimited());
  }
}

void WriteJson(const Message& message, JsonWriter& writer) {
  const Reflection& reflection = *message.GetReflection();
  const google::protobuf::Descriptor& type = *message.GetDescriptor();
  writer.BeginObject();
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    writer.Key(field.name());
    if (field.is_repeated()) {
      writer.BeginArray();
      const int count = reflection.FieldSize(message, &field);
      for (int index = 0; index < count; ++index) WriteJsonValue(message, field, index, writer);
      writer.EndArray();
    } else if (reflection.HasField(message, &field)) {
      WriteJsonValue(message, field, -1, writer);
    } else {
      writer.Null();
    }
  }
  writer.EndObject();
}

std::string ToText(const Message& message) {
  google::protobuf::TextFormat::Printer printer;
  // The printer owns it.
  printer.SetDefaultFieldValuePrinter(new SafeTexts);
  std::string text;
  printer.PrintToString(message, &text);
  return text;
}

MessageForm FormNamed(const std::string& name) {
  static const std::map<std::string, MessageForm> forms = {{"wire", MessageForm::kWire},
                                                           {"hex", MessageForm::kHex},
                                                           {"json", MessageForm::kJson},
                                                           {"text", MessageForm::kText}};
  return forms.at(name);
}

MessageWriter::MessageWriter(Output& out, MessageForm form, bool of_stream)
    : out_(out),
      form_(form),
      of_stream_(of_stream),
      json_(out, of_stream ? JsonWriter::Layout::kOneLine : JsonWriter::Layout::kIndented) {}

void MessageWriter::Write(const Message& message) {
  if (form_ == MessageForm::kJson) return WriteJson(message, json_);
  if (form_ == MessageForm::kText) {
    if (of_stream_) out_.Print("# {}\n", message.GetDescriptor()->name());
    return out_.Write(ToText(message));
  }
  std::string bytes;
  if (of_stream_) {
    google::protobuf::io::StringOutputStream stream(&bytes);
    google::protobuf::io::CodedOutputStream(&stream).WriteVarint64(message.ByteSizeLong());
  }
  message.AppendPartialToString(&bytes);
  if (form_ == MessageForm::kWire) return out_.Write(bytes);
  out_.Print("{}\n", Hex(bytes));
}

}  // namespace zorl2_inspect
