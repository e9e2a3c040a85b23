#include "check/internal/schema.h"

#include <algorithm>
#include <array>

#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"
#include "zorid.pb.h"

namespace zorl2::check::internal {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::EnumDescriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

bool IsSame(const EnumDescriptor* type, const EnumDescriptor* model) {
  if (type == nullptr || model == nullptr) return type == model;
  if (type->value_count() != model->value_count()) return false;
  for (int i = 0; i < type->value_count(); ++i) {
    if (type->value(i)->number() != model->value(i)->number()) return false;
  }
  return true;
}

// A type of the same name may come from another version of the schema.
bool IsSame(const Descriptor* type, const Descriptor* model) {
  if (type == model) return true;
  if (type == nullptr || model == nullptr) return false;
  if (type->full_name() != model->full_name()) return false;
  if (type->field_count() != model->field_count()) return false;
  for (int i = 0; i < type->field_count(); ++i) {
    const FieldDescriptor& field = *type->field(i);
    const FieldDescriptor& expected = *model->field(i);
    if (field.number() != expected.number() || field.type() != expected.type() ||
        field.label() != expected.label() || !IsSame(field.enum_type(), expected.enum_type()) ||
        !IsSame(field.message_type(), expected.message_type())) {
      return false;
    }
  }
  return true;
}

// In the order of RecordType.
const std::array<const Descriptor*, kRecordTypes>& Descriptors() {
  static const std::array<const Descriptor*, kRecordTypes> descriptors = {
      pb::Zorid::descriptor(),
      pb::IntfEntry::descriptor(),
      pb::ShutStateSync::descriptor(),
      pb::BlockStateSync::descriptor(),
      pb::InformationClient::descriptor(),
      pb::LagMemberOperationProto::descriptor(),
  };
  return descriptors;
}

// The runtime builds descriptors at their first use. Used here, while the program is loaded, they
// cost a check no allocation.
[[maybe_unused]] const bool kDescriptorsAreBuilt = [] {
  for (const Descriptor* descriptor : Descriptors()) {
    const google::protobuf::FileDescriptor& file = *descriptor->file();
    for (int i = 0; i < file.message_type_count(); ++i) {
      const Descriptor& type = *file.message_type(i);
      for (int j = 0; j < type.field_count(); ++j) static_cast<void>(type.field(j)->type());
    }
  }
  return true;
}();

}  // namespace

RecordType RecordTypeOf(const Descriptor& type) {
  const auto same = [&type](const Descriptor* model) { return IsSame(&type, model); };
  const auto found = std::find_if(Descriptors().begin(), Descriptors().end(), same);
  return static_cast<RecordType>(found - Descriptors().begin());
}

const Descriptor& DescriptorOf(RecordType type) {
  return *Descriptors()[static_cast<std::size_t>(type)];
}

Reflected Reflect(const Message& message) {
  return {message, *message.GetReflection(), *message.GetDescriptor()};
}

const FieldDescriptor& FieldOf(const Reflected& reflected, int number) {
  return *reflected.type.FindFieldByNumber(number);
}

int CountOf(const Reflected& reflected, const FieldDescriptor& field) {
  const auto& [message, reflection, type] = reflected;
  if (field.is_repeated()) return reflection.FieldSize(message, &field);
  return reflection.HasField(message, &field) ? 1 : 0;
}

const Message& MessageAt(const Reflected& reflected, const FieldDescriptor& field, int index) {
  const auto& [message, reflection, type] = reflected;
  if (field.is_repeated()) return reflection.GetRepeatedMessage(message, &field, index);
  return reflection.GetMessage(message, &field);
}

std::string ElementPath(const FieldDescriptor& field, int index) {
  if (!field.is_repeated() || index == kWholeList) return field.name();
  return field.name() + "[" + std::to_string(index) + "]";
}

}  // namespace zorl2::check::internal
