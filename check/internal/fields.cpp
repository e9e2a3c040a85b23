#include "check/internal/fields.h"

namespace zorl2::check::internal {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

int CountOf(const Message& message, const FieldDescriptor& field) {
  if (field.is_repeated()) return message.GetReflection()->FieldSize(message, &field);
  return message.GetReflection()->HasField(message, &field) ? 1 : 0;
}

const Message& MessageAt(const Message& message, const FieldDescriptor& field, int index) {
  if (field.is_repeated()) {
    return message.GetReflection()->GetRepeatedMessage(message, &field, index);
  }
  return message.GetReflection()->GetMessage(message, &field);
}

std::string ElementPath(const FieldDescriptor& field, int index) {
  if (!field.is_repeated() || index == kWholeField) return field.name();
  return field.name() + "[" + std::to_string(index) + "]";
}

}  // namespace zorl2::check::internal
