// Which message type a capture holds.
#pragma once

#include <google/protobuf/descriptor.h>

#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

struct TypeGuess {
  // Null when nothing fits or more than one type fits equally well.
  const google::protobuf::Descriptor* type = nullptr;
  // Why this one, or why none, for a person.
  std::string reason;
};

// From bytes in the wire format, whole or damaged.
TypeGuess GuessFromWire(std::string_view bytes);

// None: the types fit equally well.
TypeGuess AmbiguousType(const std::vector<const google::protobuf::Descriptor*>& types);

}  // namespace zorl2_inspect
