// Finds places in bytes in the wire format.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/text/error.h"

namespace zorl2_inspect {

// The first reason why the runtime rejects a message of the type, if it does.
std::optional<Problem> FirstWireError(std::string_view bytes,
                                      const google::protobuf::Descriptor& type);

// The offset of the last occurrence of the field at the path, also of an unlisted value; for an
// absent field the offset of the nearest message around it.
std::size_t OffsetOf(std::string_view bytes, const google::protobuf::Descriptor& type,
                     std::string_view path);

// The path of the message that contains the field.
std::string_view MessagePath(std::string_view path);

// Where fields are, found in one walk through the bytes for any number of paths. An unknown field
// or unlisted value has the path "typeInfo.#9".
class FieldOffsets {
 public:
  FieldOffsets(std::string_view bytes, const google::protobuf::Descriptor& type,
               const std::vector<std::string>& paths);

  // The last occurrence of the field, the beginning of a list; of unknown fields with one path each
  // call returns the next one. Nothing for an absent field.
  std::optional<std::size_t> Take(const std::string& path);

  // The same, but for an absent field the nearest message around it, and 0 for the whole message.
  std::size_t Near(const std::string& path) const;

 private:
  class Finder;

  struct Place {
    std::vector<std::size_t> offsets;
    std::size_t taken = 0;
  };
  std::map<std::string, Place, std::less<>> places_;
};

}  // namespace zorl2_inspect
