// Values of messages as text.
#pragma once

#include <google/protobuf/message.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "zorid.pb.h"

namespace zorl2_inspect {

// Four values with dots between them, such as 0.0.0.2. An identifier of another size has the first
// values and their number.
std::string DottedText(const zorl2::protobuf::Zorid& id);

// "path.name"; "name" if the path is empty.
std::string Join(std::string_view path, std::string_view name);
// "path[index]".
std::string At(std::string_view path, int index);
// "intfEntry.zorid" for "intfEntry[2].zorid".
std::string WithoutIndices(std::string_view path);

inline constexpr std::size_t kShortText = 60;

// The value of a field; `index` is -1 for a singular field. Quotes texts and cuts them at the
// limit; writes a message on one line. Without a limit, an identifier has all its values.
std::string ValueText(const google::protobuf::Message& message,
                      const google::protobuf::FieldDescriptor& field, int index,
                      std::size_t limit = kShortText);

// The message in the text format, on one line.
std::string OneLineText(const google::protobuf::Message& message, std::size_t limit);

struct PathValue {
  std::string path;
  std::string value;
};

// The leaves of the message in the order of the schema, at most `most` of them. An identifier is a
// leaf.
std::vector<PathValue> Leaves(const google::protobuf::Message& message, std::size_t most);

}  // namespace zorl2_inspect
