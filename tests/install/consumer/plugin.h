// What both plugins export.
#pragma once

#include <string>

extern "C" {
// The octets of an entry with this name.
bool EncodeName(const std::string& name, std::string& octets);
// The name in the octets of an entry.
bool DecodeName(const std::string& octets, std::string& name);
}
