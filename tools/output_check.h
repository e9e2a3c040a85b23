// Whether what was printed got out.
#pragma once

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "tools/error.h"

namespace zorl2_inspect {

[[noreturn]] inline void FailOutput(const std::error_code& code) {
  throw InputError("standard output", "", "cannot write: " + code.message());
}

// Runs work that prints to standard output and returns its result, once all of it is written.
// Throws InputError for a full disk or a reader that left.
template <typename Work>
auto WithOutput(Work work) {
  try {
    const auto result = work();
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
      FailOutput(std::error_code(errno != 0 ? errno : EIO, std::generic_category()));
    }
    return result;
  } catch (const std::system_error& error) {
    FailOutput(error.code());
  }
}

}  // namespace zorl2_inspect
