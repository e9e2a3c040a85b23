// Not installed. The fields that can lose something when a message converts.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <memory>
#include <vector>

#include "check/internal/schema.h"

namespace zorl2::check::internal {

// What of a present value survives.
enum class Survival {
  kWhole,       // All of it.
  kLow16Bits,   // Another number is narrowed.
  kListed,      // A listed value; any other is replaced by the value 0.
  kIdentifier,  // Four values of 8 bits.
  kParts,       // What survives of the fields of a message.
  kStates,      // The last element for each interface, in ascending order.
};

struct LossyType;

struct LossyField {
  int index;  // In its message.
  Survival survival;
  const google::protobuf::EnumDescriptor* enumeration;  // Null unless it is kListed.
  std::unique_ptr<const LossyType> type;                // Null unless it is a message.
};

// A generated message type. Most fields of the schema cannot lose anything, and a look-up of a
// descriptor takes longer than most reads, so both are done once.
struct LossyType {
  const google::protobuf::Descriptor* descriptor = nullptr;
  const google::protobuf::Reflection* reflection = nullptr;
  std::vector<LossyField> fields;  // In the order of the schema.
};

// The fields of any type but kNone.
const LossyType& LossyTypeOf(RecordType type);

}  // namespace zorl2::check::internal
