// Files and standard input as a whole. Every function throws Error if the system fails.
#pragma once

#include <string>

namespace zorl2_inspect {

// The name of the file in errors and headings: "standard input" for "-".
std::string InputName(const std::string& file);

// A descriptor of the file; "-" is standard input, which remains open when the result is closed.
int OpenFile(const std::string& file);

// A file in memory with these bytes. The name is for errors.
int OpenBytes(const std::string& bytes, const std::string& name);

// The whole content. Also throws Error for more than 512 MiB.
std::string ReadInput(const std::string& file);
// What has not been read yet.
std::string ReadAll(int descriptor, const std::string& name);

}  // namespace zorl2_inspect
