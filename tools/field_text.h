// Values of messages as a person reads them.
#pragma once

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <string>
#include <string_view>
#include <vector>

#include "zorid.pb.h"

namespace zorl2_inspect {

// Four values with dots between, such as 0.0.0.2; of another count, the first ones and the count.
std::string DottedText(const zorl2::protobuf::Zorid& id);

// "path.name", or "name" at the top.
std::string Join(std::string_view path, std::string_view name);
// "path[index]".
std::string At(std::string_view path, int index);

// A field of the message that is no message; index is -1 for a field that is not repeated.
std::string ValueText(const google::protobuf::Message& message,
                      const google::protobuf::FieldDescriptor& field, int index);

struct UnknownValue {
  // The path of the field with its number, such as typeInfo.#9.
  std::string path;
  // The path of the schema's field of this number; empty when it has none.
  std::string field_path;
  int number = 0;
  const char* wire_type = "";
  std::string value;
  // What the schema has under this number, or nothing; such as "vlanType: VlanType does not list
  // 9".
  std::string known_as;
};

// The unknown fields of this message alone.
std::vector<UnknownValue> UnknownValuesHere(const google::protobuf::Message& message,
                                            std::string_view path);
// And those of all messages in it.
std::vector<UnknownValue> UnknownValues(const google::protobuf::Message& message);

struct PathValue {
  std::string path;
  std::string value;
};

// Every leaf of the message in the order of the schema, an identifier as one leaf. At most so many.
std::vector<PathValue> Leaves(const google::protobuf::Message& message, std::size_t most);

}  // namespace zorl2_inspect
