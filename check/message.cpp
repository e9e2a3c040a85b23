// What a converter does with a message.
#include "check/check.h"
#include "check/internal/rules.h"
#include "check/internal/schema.h"

namespace zorl2::check {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using internal::Fails;
using internal::kAbsent;
using internal::kOctets;
using internal::RecordType;
using internal::Reflected;

// The first required field that the message lacks, then the first failure among the messages in it.
template <typename CheckPart>
Verdict FirstFailure(const Message& message, const CheckPart& check_part) {
  const Reflected reflected = internal::Reflect(message);
  const Descriptor& type = reflected.type;
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    if (field.is_required() && internal::CountOf(reflected, field) == 0) {
      return internal::MissingField(message, field);
    }
  }
  for (int i = 0; i < type.field_count(); ++i) {
    const FieldDescriptor& field = *type.field(i);
    if (field.cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    const int count = internal::CountOf(reflected, field);
    for (int index = 0; index < count; ++index) {
      Verdict verdict = check_part(internal::MessageAt(reflected, field, index));
      if (!Fails(verdict)) continue;
      verdict.field = internal::ElementPath(field, index) + "." + verdict.field;
      return verdict;
    }
  }
  return {};
}

// In the order of Message::FindInitializationErrors().
Verdict FindMissing(const Message& message) { return FirstFailure(message, FindMissing); }

// The first identifier of a signal that does not have four values.
struct WrongIdentifier {
  int index = 0;
  int values = kOctets;
};

void KeepFirst(WrongIdentifier& wrong, int index, int values) {
  if (wrong.values == kOctets && values != kOctets) wrong = {index, values};
}

// Checks a signal in which no required field is missing.
Verdict CheckComplete(const char* field, pb::ProtocolType protocol, const WrongIdentifier& wrong) {
  Verdict verdict =
      internal::CheckSignalProtocol(field, protocol, pb::ProtocolType_IsValid(protocol), protocol);
  if (Fails(verdict) || wrong.values == kOctets) return verdict;
  return internal::WrongSize(Outcome::kEndsProcess,
                             "intfs[" + std::to_string(wrong.index) + "].zorid", wrong.values);
}

// Reads each element once: a second pass would cost as much as the first.
template <typename Signal>
Verdict CheckSignal(const Signal& signal, const char* field, bool has_protocol,
                    pb::ProtocolType protocol) {
  bool complete = has_protocol;
  WrongIdentifier wrong;
  const int count = signal.intfs_size();
  for (int i = 0; i < count && complete; ++i) {
    const auto& element = signal.intfs(i);
    complete = element.IsInitialized();
    KeepFirst(wrong, i, element.zorid().value_size());
  }
  return complete ? CheckComplete(field, protocol, wrong) : FindMissing(signal);
}

// The same checks through reflection, for a DynamicMessage, whose enumerations hold only listed
// values.

int ValueCount(const Message& zorid) {
  const Reflected reflected = internal::Reflect(zorid);
  return internal::CountOf(reflected, internal::FieldOf(reflected, pb::Zorid::kValueFieldNumber));
}

// The number of values of the Zorid in the field; kAbsent if there is none.
int ValueCount(const Message& message, int number) {
  const Reflected reflected = internal::Reflect(message);
  const FieldDescriptor& zorid = internal::FieldOf(reflected, number);
  return internal::CountOf(reflected, zorid) == 0
             ? kAbsent
             : ValueCount(internal::MessageAt(reflected, zorid, 0));
}

Verdict CheckDynamicSignal(const Message& message) {
  const Reflected signal = internal::Reflect(message);
  // The numbers of both signals and of their elements are the same.
  const FieldDescriptor& protocol =
      internal::FieldOf(signal, pb::ShutStateSync::kShutProtocolFieldNumber);
  const FieldDescriptor& intfs = internal::FieldOf(signal, pb::ShutStateSync::kIntfsFieldNumber);
  WrongIdentifier wrong;
  const int count = internal::CountOf(signal, intfs);
  for (int i = 0; i < count; ++i) {
    KeepFirst(
        wrong, i,
        ValueCount(internal::MessageAt(signal, intfs, i), pb::ShutStateInfo::kZoridFieldNumber));
  }
  const int number = signal.reflection.GetEnumValue(message, &protocol);
  return CheckComplete(protocol.name().c_str(), static_cast<pb::ProtocolType>(number), wrong);
}

Verdict CheckDynamic(RecordType type, const Message& message) {
  Verdict missing = FindMissing(message);
  if (Fails(missing)) return missing;
  switch (type) {
    case RecordType::kZorid:
      return internal::CheckIdentifier(ValueCount(message));
    case RecordType::kShutStateSync:
    case RecordType::kBlockStateSync:
      return CheckDynamicSignal(message);
    case RecordType::kLagMemberOperation:
      return internal::CheckOperation(
          ValueCount(message, pb::LagMemberOperationProto::kLagFieldNumber),
          ValueCount(message, pb::LagMemberOperationProto::kMemberFieldNumber));
    default:
      return {};
  }
}

template <typename Generated>
Verdict CheckAs(RecordType type, const Message& message) {
  const auto* generated = google::protobuf::DynamicCastToGenerated<Generated>(&message);
  return generated != nullptr ? Check(*generated) : CheckDynamic(type, message);
}

Verdict CheckPart(const Message& part);

Verdict CheckAs(RecordType type, const Message& message) {
  switch (type) {
    case RecordType::kZorid:
      return CheckAs<pb::Zorid>(type, message);
    case RecordType::kIntfEntry:
      return CheckAs<pb::IntfEntry>(type, message);
    case RecordType::kShutStateSync:
      return CheckAs<pb::ShutStateSync>(type, message);
    case RecordType::kBlockStateSync:
      return CheckAs<pb::BlockStateSync>(type, message);
    case RecordType::kInformationClient:
      return CheckAs<pb::InformationClient>(type, message);
    case RecordType::kLagMemberOperation:
      return CheckAs<pb::LagMemberOperationProto>(type, message);
    case RecordType::kNone:
      break;
  }
  return FirstFailure(message, CheckPart);
}

Verdict CheckPart(const Message& part) {
  const RecordType type = internal::RecordTypeOf(*part.GetDescriptor());
  // No converter reads an identifier within another message on its own.
  return type == RecordType::kZorid ? Verdict{} : CheckAs(type, part);
}

}  // namespace

Verdict Check(const pb::IntfEntry& message) {
  return message.IsInitialized() ? internal::CheckEnumerations(message) : FindMissing(message);
}

Verdict Check(const pb::ShutStateSync& message) {
  return CheckSignal(message, "shutProtocol", message.has_shutprotocol(), message.shutprotocol());
}

Verdict Check(const pb::BlockStateSync& message) {
  return CheckSignal(message, "blockProtocol", message.has_blockprotocol(),
                     message.blockprotocol());
}

Verdict Check(const pb::InformationClient& message) {
  return message.IsInitialized() ? Verdict{} : FindMissing(message);
}

Verdict Check(const Message& message) {
  return CheckAs(internal::RecordTypeOf(*message.GetDescriptor()), message);
}

}  // namespace zorl2::check
