#include "tools/model/elements.h"

#include "zorid.pb.h"

namespace zorl2_inspect {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;

const FieldDescriptor* IdentifierOf(const Descriptor& type) {
  const FieldDescriptor* field = type.FindFieldByName("zorid");
  const bool fits =
      field != nullptr && !field->is_repeated() && field->message_type() == pb::Zorid::descriptor();
  return fits ? field : nullptr;
}

const FieldDescriptor* ListOf(const Descriptor& type) {
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor* field = type.field(i);
    if (field->is_repeated() && field->message_type() != nullptr &&
        IdentifierOf(*field->message_type()) != nullptr) {
      return field;
    }
  }
  return nullptr;
}

}  // namespace zorl2_inspect
