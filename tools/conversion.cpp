#include "tools/conversion.h"

#include <fmt/format.h>

#include <stdexcept>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tools/field_text.h"
#include "tools/message_types.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

std::optional<Refusal> CheckIdentifier(const pb::Zorid& id, std::string path) {
  if (id.value_size() == 4) return std::nullopt;
  return Refusal{std::move(path),
                 fmt::format("expected an identifier of 4 values, found {}", id.value_size())};
}

template <typename Signal>
std::optional<Refusal> CheckSignal(const Signal& signal, pb::ProtocolType protocol,
                                   const char* field) {
  if (protocol == pb::L1_PROTO || protocol == pb::L2_PROTO) {
    return Refusal{field, fmt::format("expected a protocol that a state signal may name, found {}",
                                      pb::ProtocolType_Name(protocol))};
  }
  for (int i = 0; i < signal.intfs_size(); ++i) {
    if (signal.intfs(i).zorid().value_size() == 4) continue;
    return CheckIdentifier(signal.intfs(i).zorid(), Join(At("intfs", i), "zorid"));
  }
  return std::nullopt;
}

std::optional<Refusal> CheckOperation(const pb::LagMemberOperationProto& operation) {
  if (!operation.has_lag()) return Refusal{"lag", "expected an identifier, found none"};
  if (!operation.has_member()) return Refusal{"member", "expected an identifier, found none"};
  if (auto refusal = CheckIdentifier(operation.lag(), "lag")) return refusal;
  return CheckIdentifier(operation.member(), "member");
}

template <typename Converter, typename Native, typename Proto>
bool Trip(const Message& before, Message& after) {
  Converter converter;
  Native native;
  // A bare identifier of the wrong size gives false and zero; that is reported as a loss.
  const bool there = converter.Convert(static_cast<const Proto&>(before), native);
  if (!there && Proto::descriptor() != pb::Zorid::descriptor()) {
    throw std::runtime_error(
        fmt::format("the converter refuses this {}", Proto::descriptor()->name()));
  }
  return converter.Convert(native, static_cast<Proto&>(after));
}

bool HoldsNative(const Descriptor& type) {
  if (HasConverter(type)) return true;
  for (int i = 0; i < type.field_count(); ++i) {
    const Descriptor* inner = type.field(i)->message_type();
    if (inner != nullptr && HoldsNative(*inner)) return true;
  }
  return false;
}

void CopyScalar(const Message& before, const FieldDescriptor* field, Message& after) {
  // The messages that are taken apart hold no repeated field but messages.
  const Reflection& get = *before.GetReflection();
  const Reflection& set = *after.GetReflection();
  switch (field->cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      return set.SetBool(&after, field, get.GetBool(before, field));
    case FieldDescriptor::CPPTYPE_ENUM:
      return set.SetEnum(&after, field, get.GetEnum(before, field));
    case FieldDescriptor::CPPTYPE_UINT32:
      return set.SetUInt32(&after, field, get.GetUInt32(before, field));
    case FieldDescriptor::CPPTYPE_INT32:
      return set.SetInt32(&after, field, get.GetInt32(before, field));
    case FieldDescriptor::CPPTYPE_UINT64:
      return set.SetUInt64(&after, field, get.GetUInt64(before, field));
    case FieldDescriptor::CPPTYPE_STRING:
      return set.SetString(&after, field, get.GetString(before, field));
    default:
      throw std::logic_error("a field of a type that the schema does not use");
  }
}

void TakeApart(const Message& before, Message& after) {
  const Reflection& get = *before.GetReflection();
  const Reflection& set = *after.GetReflection();
  std::vector<const FieldDescriptor*> fields;
  get.ListFields(before, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) {
      CopyScalar(before, field, after);
    } else if (!field->is_repeated()) {
      ThereAndBack(get.GetMessage(before, field), *set.MutableMessage(&after, field));
    } else {
      const int count = get.FieldSize(before, field);
      for (int i = 0; i < count; ++i) {
        ThereAndBack(get.GetRepeatedMessage(before, field, i), *set.AddMessage(&after, field));
      }
    }
  }
}

}  // namespace

std::optional<Refusal> FindRefusal(const Message& message) {
  const Descriptor* type = message.GetDescriptor();
  if (type == pb::ShutStateSync::descriptor()) {
    const auto& signal = static_cast<const pb::ShutStateSync&>(message);
    return CheckSignal(signal, signal.shutprotocol(), "shutProtocol");
  }
  if (type == pb::BlockStateSync::descriptor()) {
    const auto& signal = static_cast<const pb::BlockStateSync&>(message);
    return CheckSignal(signal, signal.blockprotocol(), "blockProtocol");
  }
  if (type == pb::LagMemberOperationProto::descriptor()) {
    return CheckOperation(static_cast<const pb::LagMemberOperationProto&>(message));
  }
  // No other message holds one of these three.
  return std::nullopt;
}

bool ThereAndBack(const Message& before, Message& after) {
  const Descriptor* type = before.GetDescriptor();
  if (type == pb::IntfEntry::descriptor()) {
    return Trip<IntfEntryConverter, ::IntfEntry, pb::IntfEntry>(before, after);
  }
  if (type == pb::Zorid::descriptor()) {
    return Trip<ZORIDConverter, zorid_t, pb::Zorid>(before, after);
  }
  if (type == pb::ShutStateSync::descriptor()) {
    return Trip<ShutStateConverter, ShutStateInfoSyncSignal, pb::ShutStateSync>(before, after);
  }
  if (type == pb::BlockStateSync::descriptor()) {
    return Trip<BlockStateConverter, BlockStateInfoSyncSignal, pb::BlockStateSync>(before, after);
  }
  if (type == pb::InformationClient::descriptor()) {
    return Trip<ZORL2InfoClientConfigConverter, ZORL2InfoClientConfig, pb::InformationClient>(
        before, after);
  }
  if (type == pb::LagMemberOperationProto::descriptor()) {
    return Trip<LagMemberConverter, LagMemberOperation, pb::LagMemberOperationProto>(before, after);
  }
  if (!HoldsNative(*type)) {
    after.CopyFrom(before);
    return false;
  }
  after.Clear();
  TakeApart(before, after);
  return true;
}

std::size_t CountNative(const Message& message) {
  if (HasConverter(*message.GetDescriptor())) return 1;
  std::size_t count = 0;
  std::vector<const FieldDescriptor*> fields;
  const Reflection& reflection = *message.GetReflection();
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    if (!field->is_repeated()) {
      count += CountNative(reflection.GetMessage(message, field));
      continue;
    }
    for (int i = 0; i < reflection.FieldSize(message, field); ++i) {
      count += CountNative(reflection.GetRepeatedMessage(message, field, i));
    }
  }
  return count;
}

}  // namespace zorl2_inspect
