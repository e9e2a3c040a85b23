// The interfaces that are not like the others.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "interface_entry.pb.h"
#include "tools/model/examples.h"

namespace zorl2_inspect {

// Compares MTU, speed and duplex mode with those of the other entries of the same type and
// category. Ignores a speed of 0 and an unknown duplex mode.
class OddValues {
 public:
  void Add(const zorl2::protobuf::IntfEntry& entry, const std::string& name);

  enum class Field { kMtu, kSpeed, kDuplex };

  struct Odd {
    Field field;
    zorl2::protobuf::InterfaceType type;
    zorl2::protobuf::InterfaceCategory category;
    std::uint64_t entries;  // Of this type and category, with a value.
    std::uint32_t usual;    // The value that more than half of them have.
    std::uint64_t unlike;   // How many have another value.
    std::vector<std::pair<std::string, std::uint32_t>> examples;  // Names and values.
  };
  // One for each field, type and category that has a usual value and others.
  std::vector<Odd> Find() const;

  // The short name of the field.
  static const char* FieldName(Field field);
  // Such as "9216", "10 Gb/s" or "FULL".
  static std::string ValueText(Field field, std::uint32_t value);

 private:
  using Key = std::tuple<Field, zorl2::protobuf::InterfaceType, zorl2::protobuf::InterfaceCategory>;
  struct Group {
    std::uint64_t entries = 0;
    std::map<std::uint32_t, Examples> values;
  };

  void Count(Field field, const zorl2::protobuf::IntfEntry& entry, std::uint32_t value,
             const std::string& name);

  std::map<Key, Group> groups_;
};

}  // namespace zorl2_inspect
