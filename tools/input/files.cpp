#include "tools/input/files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>

#include "tools/text/error.h"

namespace zorl2_inspect {
namespace {

// No input that is held in memory as a whole is longer than this.
constexpr std::size_t kLongestInput = std::size_t{512} << 20;

}  // namespace

int OpenFile(const std::string& file) {
  const int descriptor = file == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)
                                     : open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor >= 0) return descriptor;
  throw Error(InputName(file), fmt::format("cannot open: {}", std::strerror(errno)));
}

std::string ReadAll(int descriptor, const std::string& name) {
  std::string content;
  std::size_t filled = 0;
  for (;;) {
    // The buffer grows as bytes arrive, never by a length that the bytes claim.
    if (content.size() - filled < 65536) content.resize(content.size() * 2 + 65536);
    const ssize_t got = read(descriptor, content.data() + filled, content.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw Error(name, fmt::format("cannot read: {}", std::strerror(errno)));
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
    if (filled > kLongestInput) {
      throw Error(name, "more than 512 MiB", "a shorter input, or a stream with --delimited");
    }
  }
  content.resize(filled);
  return content;
}

int OpenBytes(const std::string& bytes, const std::string& name) {
  const int descriptor = memfd_create("zorl2-inspect", MFD_CLOEXEC);
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t put = write(descriptor, bytes.data() + written, bytes.size() - written);
    if (put <= 0) {
      close(descriptor);
      throw Error(name, "cannot hold the bytes in memory");
    }
    written += static_cast<std::size_t>(put);
  }
  lseek(descriptor, 0, SEEK_SET);
  return descriptor;
}

std::string InputName(const std::string& file) { return file == "-" ? "standard input" : file; }

std::string ReadInput(const std::string& file) {
  const int descriptor = OpenFile(file);
  try {
    std::string content = ReadAll(descriptor, InputName(file));
    close(descriptor);
    return content;
  } catch (...) {
    close(descriptor);
    throw;
  }
}

}  // namespace zorl2_inspect
