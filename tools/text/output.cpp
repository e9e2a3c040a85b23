#include "tools/text/output.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "tools/text/error.h"
#include "tools/text/wrap.h"

namespace zorl2_inspect {

Output::Output(std::string file) : file_(std::move(file)), stream_(stdout) {
  if (file_ == "-") {
    width_ = TerminalWidth(STDOUT_FILENO);
    return;
  }
  // Writes directly to a device or a pipe, which cannot be replaced.
  const bool plain = access(file_.c_str(), F_OK) != 0 || file_.compare(0, 5, "/dev/") != 0;
  if (plain) temporary_ = fmt::format("{}.{}.part", file_, getpid());
  stream_ = std::fopen(plain ? temporary_.c_str() : file_.c_str(), "wb");
  if (stream_ == nullptr) Fail(errno);
}

Output::~Output() {
  if (stream_ == nullptr) return;
  // The output before an error remains visible; the error itself is reported elsewhere.
  std::fwrite(buffer_.data(), 1, buffer_.size(), stream_);
  if (stream_ == stdout) return;
  std::fclose(stream_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void Output::Fail(int error) const {
  throw Error(file_ == "-" ? "standard output" : file_,
              fmt::format("cannot write: {}", std::strerror(error)));
}

void Output::RejectTerminal(bool forced) const {
  if (forced || stream_ == nullptr || isatty(fileno(stream_)) != 1) return;
  throw Error(file_ == "-" ? "standard output" : file_, "a terminal",
              "a file or a pipe for wire bytes, or --force");
}

void Output::Flush() {
  if (text_ != nullptr) {
    *text_ += buffer_;
    buffer_.clear();
    return;
  }
  errno = 0;
  const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), stream_);
  const bool whole = written == buffer_.size();
  buffer_.clear();
  if (!whole || std::fflush(stream_) != 0) Fail(errno != 0 ? errno : EIO);
}

void Output::Finish() {
  Flush();
  if (stream_ == stdout || text_ != nullptr) return;
  const bool closed = std::fclose(std::exchange(stream_, nullptr)) == 0;
  if (closed && (temporary_.empty() || std::rename(temporary_.c_str(), file_.c_str()) == 0)) return;
  const int error = errno;
  if (!temporary_.empty()) unlink(temporary_.c_str());
  Fail(error);
}

}  // namespace zorl2_inspect
