// The values that a conversion loses or rejects, for programs.
#pragma once

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "check/check.h"
#include "tools/text/json_writer.h"

namespace zorl2_inspect {

// Writes values as "show --json" does, from the message itself: zorl2::check shortens texts.
class RoundTripValues {
 public:
  // The message must remain valid.
  explicit RoundTripValues(const google::protobuf::Message& message) : message_(message) {}

  // The value in the message; null for an absent field. Of unknown fields with one path each call
  // writes the next one, so the losses must come in their order.
  void WriteBefore(const zorl2::check::Loss& loss, JsonWriter& json);
  // What takes its place; null if nothing does.
  void WriteAfter(const zorl2::check::Loss& loss, JsonWriter& json) const;

  // The value because of which the conversion fails, also an unlisted one; null if it is missing.
  void WriteRejected(const std::string& path, JsonWriter& json) const;

 private:
  // The unknown fields of one message, by their numbers.
  struct Unknown {
    std::vector<const google::protobuf::UnknownField*> fields;
    std::size_t next = 0;
  };

  void WriteUnknown(const zorl2::check::Loss& loss, JsonWriter& json);

  const google::protobuf::Message& message_;
  std::map<std::string, Unknown, std::less<>> unknown_;
};

}  // namespace zorl2_inspect
