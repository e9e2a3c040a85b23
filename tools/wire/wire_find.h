// Finds places in bytes in the wire format.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstddef>
#include <optional>
#include <string_view>

#include "tools/text/error.h"

namespace zorl2_inspect {

// The first reason why the runtime rejects a message of the type, if it does.
std::optional<Problem> FirstWireError(std::string_view bytes,
                                      const google::protobuf::Descriptor& type);

// The offset of the last occurrence of the field at the path, also of an unlisted value; for an
// absent field the offset of the nearest message around it.
std::size_t OffsetOf(std::string_view bytes, const google::protobuf::Descriptor& type,
                     std::string_view path);

}  // namespace zorl2_inspect
