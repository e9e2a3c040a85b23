// Reads whole files and standard input. Every function throws Error if a system call fails.
#pragma once

#include <string>

namespace zorl2_inspect {

// The name of the file in errors and headings: "standard input" for "-".
std::string InputName(const std::string& file);

// Returns a descriptor of the file. "-" is standard input, which remains open when the result is
// closed.
int OpenFile(const std::string& file);

// Returns a descriptor of a file in memory with these bytes. Errors contain the name.
int OpenBytes(const std::string& bytes, const std::string& name);

// Returns the whole content. Throws Error also for more than 512 MiB.
std::string ReadInput(const std::string& file);
// Returns the rest of the content, from the current position.
std::string ReadAll(int descriptor, const std::string& name);

}  // namespace zorl2_inspect
