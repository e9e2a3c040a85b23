// Messages through the converters of the library, never into what they refuse fatally.
#pragma once

#include <google/protobuf/message.h>

#include <optional>
#include <string>

namespace zorl2_inspect {

// What a converter would refuse: by false, by an exception, or by ending the process.
struct Refusal {
  // The field, such as intfs[3].zorid.
  std::string path;
  // What was expected and what stood there.
  std::string problem;
};

// The first thing in an initialised message that its converter, or that of a message in it, would
// refuse. An identifier of the wrong size is no refusal where the converters are lenient.
std::optional<Refusal> FindRefusal(const google::protobuf::Message& message);

// Message to native and back to message. A message without a native record is taken apart into
// those that have one; what has none is copied. Nothing in the message may be refused. True when
// any native record was involved.
bool ThereAndBack(const google::protobuf::Message& before, google::protobuf::Message& after);

// How many messages with a native record there are in it, of which the ones inside another do not
// count; a list of 52 entries and a client gives 53.
std::size_t CountNative(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
