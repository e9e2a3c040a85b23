#include "tools/model/native_types.h"

#include <stdexcept>
#include <type_traits>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tools/model/native_fields.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

template <typename Proto, typename Native, typename Converter>
bool BothWays(const Message& before, Message& after) {
  Converter converter;
  // An entry is replaced in place and keeps its memory; the other records would be merged.
  static Native native;
  if (!std::is_same_v<Native, ::IntfEntry>) native = Native();
  return converter.Convert(static_cast<const Proto&>(before), native) &&
         converter.Convert(native, static_cast<Proto&>(after));
}

template <typename Proto, typename Native, typename Converter>
std::vector<PathValue> FieldsOf(const Message& message) {
  Native native;
  Converter().Convert(static_cast<const Proto&>(message), native);
  return NativeFields(native);
}

template <typename Proto, typename Native, typename Converter>
NativeType Row(const char* record, const char* converter) {
  return {Proto::descriptor(), record, converter, BothWays<Proto, Native, Converter>,
          FieldsOf<Proto, Native, Converter>};
}

const std::vector<NativeType>& NativeTypes() {
  static const std::vector<NativeType> types = {
      Row<pb::Zorid, zorid_t, ZORIDConverter>("zorid_t", "ZORIDConverter"),
      Row<pb::IntfEntry, ::IntfEntry, IntfEntryConverter>("IntfEntry", "IntfEntryConverter"),
      Row<pb::InformationClient, ZORL2InfoClientConfig, ZORL2InfoClientConfigConverter>(
          "ZORL2InfoClientConfig", "ZORL2InfoClientConfigConverter"),
      Row<pb::ShutStateSync, ShutStateInfoSyncSignal, ShutStateConverter>("ShutStateInfoSyncSignal",
                                                                          "ShutStateConverter"),
      Row<pb::BlockStateSync, BlockStateInfoSyncSignal, BlockStateConverter>(
          "BlockStateInfoSyncSignal", "BlockStateConverter"),
      Row<pb::LagMemberOperationProto, LagMemberOperation, LagMemberConverter>(
          "LagMemberOperation", "LagMemberConverter"),
  };
  return types;
}

// The identifier of another message has no native record: only its message's converter reads it.
const NativeType* NativePart(const Descriptor& type) {
  return &type == pb::Zorid::descriptor() ? nullptr : FindNativeType(type);
}

bool HoldsNative(const Descriptor& type) {
  for (int i = 0; i < type.field_count(); ++i) {
    const Descriptor* part = type.field(i)->message_type();
    if (part != nullptr && (NativePart(*part) != nullptr || HoldsNative(*part))) return true;
  }
  return false;
}

// Whether messages of the one type contain messages of the other.
bool Holds(const Descriptor& outer, const Descriptor& part) {
  for (int i = 0; i < outer.field_count(); ++i) {
    const Descriptor* inner = outer.field(i)->message_type();
    if (inner != nullptr && (inner == &part || Holds(*inner, part))) return true;
  }
  return false;
}

// Calls visit(path, part) for each message in a field.
template <typename Visit>
void ForEachPart(const Message& message, const std::string& path, Visit visit) {
  const Reflection& reflection = *message.GetReflection();
  std::vector<const FieldDescriptor*> fields;
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    const std::string name = Join(path, field->name());
    const int count = field->is_repeated() ? reflection.FieldSize(message, field) : 0;
    if (!field->is_repeated()) visit(name, reflection.GetMessage(message, field));
    for (int i = 0; i < count; ++i) {
      visit(At(name, i), reflection.GetRepeatedMessage(message, field, i));
    }
  }
}

void VisitParts(const Message& message, const std::string& path, const VisitNative& visit) {
  ForEachPart(message, path, [&](const std::string& part_path, const Message& part) {
    if (const NativeType* type = NativePart(*part.GetDescriptor())) {
      visit(part_path, *type, part);
    } else {
      VisitParts(part, part_path, visit);
    }
  });
}

void Trip(const NativeType& type, const Message& before, Message& after) {
  if (type.round_trip(before, after)) return;
  throw std::logic_error(std::string(type.converter) + " rejects a message that converts");
}

// Replaces each part that has a native record by the result of its round trip.
void ReplaceParts(const Message& before, Message& after) {
  const Reflection& reflection = *before.GetReflection();
  const auto replace = [](const Message& part, Message* target) {
    if (const NativeType* type = NativePart(*part.GetDescriptor()))
      return Trip(*type, part, *target);
    ReplaceParts(part, *target);
  };
  std::vector<const FieldDescriptor*> fields;
  reflection.ListFields(before, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    if (!field->is_repeated()) {
      replace(reflection.GetMessage(before, field), reflection.MutableMessage(&after, field));
      continue;
    }
    for (int i = 0; i < reflection.FieldSize(before, field); ++i) {
      replace(reflection.GetRepeatedMessage(before, field, i),
              reflection.MutableRepeatedMessage(&after, field, i));
    }
  }
}

}  // namespace

const NativeType* FindNativeType(const Descriptor& type) {
  for (const NativeType& native : NativeTypes()) {
    if (native.message == &type) return &native;
  }
  return nullptr;
}

std::string NativeRecordName(const Descriptor& type) {
  if (const NativeType* native = FindNativeType(type)) return native->record;
  // Only the parts of an entry have record types of their own.
  return Holds(*pb::IntfEntry::descriptor(), type) ? "IntfEntry::" + type.name() : std::string();
}

void ForEachNative(const Message& message, const VisitNative& visit) {
  if (const NativeType* type = FindNativeType(*message.GetDescriptor())) {
    visit("", *type, message);
  } else {
    VisitParts(message, "", visit);
  }
}

bool RoundTrip(const Message& before, Message& after) {
  if (const NativeType* type = FindNativeType(*before.GetDescriptor())) {
    Trip(*type, before, after);
    return true;
  }
  after.CopyFrom(before);
  if (!HoldsNative(*before.GetDescriptor())) return false;
  // What surrounds the native records has no unknown fields.
  after.DiscardUnknownFields();
  ReplaceParts(before, after);
  return true;
}

}  // namespace zorl2_inspect
