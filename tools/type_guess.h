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

// From the names of the fields that stand at the top of a JSON or text form; the guesser tells
// whether the whole input is a message of a type, when the names alone do not decide.
struct NameGuesser {
  virtual ~NameGuesser() = default;
  virtual bool Takes(const google::protobuf::Descriptor& type) = 0;
};
TypeGuess GuessFromNames(const std::vector<std::string>& names, NameGuesser& guesser);

}  // namespace zorl2_inspect
