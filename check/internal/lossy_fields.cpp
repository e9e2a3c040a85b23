#include "check/internal/lossy_fields.h"

#include <array>
#include <cstddef>
#include <utility>

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
using google::protobuf::MessageFactory;

Survival SurvivalOf(const FieldDescriptor& field) {
  if (const Descriptor* type = field.message_type()) {
    if (type == pb::Zorid::descriptor()) return Survival::kIdentifier;
    const bool is_state =
        type == pb::ShutStateInfo::descriptor() || type == pb::BlockStateInfo::descriptor();
    return is_state ? Survival::kStates : Survival::kParts;
  }
  // A message with an unlisted value of another enumeration does not convert.
  const EnumDescriptor* enumeration = field.enum_type();
  if (enumeration == pb::ProtocolType_descriptor() || enumeration == pb::BlockState_descriptor()) {
    return Survival::kListed;
  }
  const bool is_bridge_port = field.containing_type() == pb::GeneralInfo::descriptor() &&
                              field.number() == pb::GeneralInfo::kBridgePortNumberFieldNumber;
  return is_bridge_port ? Survival::kLow16Bits : Survival::kWhole;
}

LossyType MakeLossyType(const Descriptor& type) {
  LossyType lossy;
  lossy.descriptor = &type;
  lossy.reflection = MessageFactory::generated_factory()->GetPrototype(&type)->GetReflection();
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    const Survival survival = SurvivalOf(field);
    // An absent optional field comes back with its default.
    if (survival == Survival::kWhole && !field.is_optional()) continue;
    std::unique_ptr<const LossyType> part;
    if (field.message_type() != nullptr) {
      part = std::make_unique<const LossyType>(MakeLossyType(*field.message_type()));
    }
    const EnumDescriptor* enumeration = survival == Survival::kListed ? field.enum_type() : nullptr;
    lossy.fields.push_back({i, survival, enumeration, std::move(part)});
  }
  return lossy;
}

using LossyTypes = std::array<LossyType, kRecordTypes>;

// Not destroyed: the destructor of another object may still look for losses.
const LossyTypes& Types() {
  static const LossyTypes& types = *[] {
    auto made = std::make_unique<LossyTypes>();
    for (std::size_t i = 0; i < kRecordTypes; ++i) {
      (*made)[i] = MakeLossyType(DescriptorOf(static_cast<RecordType>(i)));
    }
    return made.release();
  }();
  return types;
}

// Made while the program is loaded, so that no call allocates them.
[[maybe_unused]] const LossyTypes& kTypesAreMade = Types();

}  // namespace

const LossyType& LossyTypeOf(RecordType type) { return Types()[static_cast<std::size_t>(type)]; }

}  // namespace zorl2::check::internal
