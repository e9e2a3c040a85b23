// What both plugins export.
#pragma once

#include <string>

extern "C" {
// Sets `bytes` to those of an entry with this name.
bool EncodeName(const std::string& name, std::string& bytes);
// Sets `name` to the name in the bytes of an entry.
bool DecodeName(const std::string& bytes, std::string& name);
}
