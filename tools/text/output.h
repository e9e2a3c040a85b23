// The file or stream that receives the results.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace zorl2_inspect {

// A file, standard output for "-", or a text in memory. Finish() replaces an older file; if an
// error comes first, the older file remains unchanged. Every function but the destructor throws
// Error if the file cannot be written.
class Output {
 public:
  explicit Output(std::string file = "-");
  // Appends to a text.
  explicit Output(std::string* text) : stream_(nullptr), text_(text) {}
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void Write(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() >= kFull) Flush();
  }
  void Write(char character) {
    buffer_ += character;
    if (buffer_.size() >= kFull) Flush();
  }

  template <typename... Arguments>
  void Print(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    fmt::format_to(std::back_inserter(buffer_), format, std::forward<Arguments>(arguments)...);
    if (buffer_.size() >= kFull) Flush();
  }

  // The number of columns of the terminal; 0 if the output is none.
  std::size_t width() const { return width_; }

  // Throws if the output is a terminal, which wire bytes would disturb, unless forced.
  void RejectTerminal(bool forced) const;

  // Passes everything to the system.
  void Flush();
  void Finish();

 private:
  static constexpr std::size_t kFull = std::size_t{1} << 16;

  [[noreturn]] void Fail(int error) const;

  std::string file_;
  std::string temporary_;
  std::FILE* stream_;
  std::string* text_ = nullptr;
  std::size_t width_ = 0;
  std::string buffer_;
};

}  // namespace zorl2_inspect
