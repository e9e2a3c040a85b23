// Infers the message type of a capture.
#pragma once

#include <google/protobuf/descriptor.h>

#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

struct InferredType {
  // Null if no type fits or several fit equally well.
  const google::protobuf::Descriptor* type = nullptr;
  // Why this type, or why none.
  std::string reason;
  // Whether the bytes are a whole message of this type, with known fields only.
  bool flawless = false;
  // How many fields were looked at.
  int fields = 0;
};

// From bytes in the wire format, whole or damaged.
InferredType InferTypeFromWire(std::string_view bytes);

// Whether the bytes are a whole message of the type, with known fields only. Looks only at the
// first elements of a list.
bool IsFlawless(std::string_view bytes, const google::protobuf::Descriptor& type);

// No type, because these fit equally well.
InferredType AmbiguousType(const std::vector<const google::protobuf::Descriptor*>& types);

}  // namespace zorl2_inspect
