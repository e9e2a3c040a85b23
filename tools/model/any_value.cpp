#include "tools/model/any_value.h"

#include <google/protobuf/descriptor.h>

namespace zorl2_inspect {

using google::protobuf::FieldDescriptor;

void AddAnyValue(google::protobuf::Message& message, const FieldDescriptor& field) {
  const google::protobuf::Reflection& set = *message.GetReflection();
  const bool repeated = field.is_repeated();
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_MESSAGE:
      repeated ? set.AddMessage(&message, &field) : set.MutableMessage(&message, &field);
      break;
    case FieldDescriptor::CPPTYPE_ENUM: {
      const auto* value = field.enum_type()->value(0);
      repeated ? set.AddEnum(&message, &field, value) : set.SetEnum(&message, &field, value);
      break;
    }
    case FieldDescriptor::CPPTYPE_BOOL:
      repeated ? set.AddBool(&message, &field, false) : set.SetBool(&message, &field, false);
      break;
    case FieldDescriptor::CPPTYPE_STRING:
      repeated ? set.AddString(&message, &field, "") : set.SetString(&message, &field, "");
      break;
    case FieldDescriptor::CPPTYPE_INT32:
      repeated ? set.AddInt32(&message, &field, 0) : set.SetInt32(&message, &field, 0);
      break;
    case FieldDescriptor::CPPTYPE_UINT64:
      repeated ? set.AddUInt64(&message, &field, 0) : set.SetUInt64(&message, &field, 0);
      break;
    default:
      // No field of the schema has another type.
      repeated ? set.AddUInt32(&message, &field, 0) : set.SetUInt32(&message, &field, 0);
  }
}

}  // namespace zorl2_inspect
