// Length-delimited records from a file descriptor, one at a time, in memory that does not grow with
// the stream.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

class RecordStream {
 public:
  enum class Status {
    kRecord,   // *record holds it until the next call
    kSkipped,  // longer than the limit; problem() says so, and the stream goes on behind it
    kBroken,   // no record can be told from here on; problem() says why
    kEnd,
  };

  // Does not own the descriptor. No record longer than the limit is ever held.
  RecordStream(int descriptor, std::size_t longest);

  Status Next(std::string_view* record);

  // Where the length of the last record stands, and where its first byte does.
  std::uint64_t offset() const { return offset_; }
  std::uint64_t content_offset() const { return content_offset_; }
  // Behind the last record.
  std::uint64_t consumed() const { return buffer_offset_ + begin_; }
  const std::string& problem() const { return problem_; }

 private:
  // Makes at least so many bytes available behind begin_, unless the stream ends before.
  bool Want(std::size_t count);
  Status Broken(std::string problem);
  Status Skip(std::uint64_t length);

  int descriptor_;
  std::size_t longest_;
  std::vector<char> buffer_;
  // What was read and not yet given out: [begin_, end_) of the buffer, whose first byte stands at
  // buffer_offset_ of the stream.
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::uint64_t buffer_offset_ = 0;
  bool at_end_ = false;
  int read_error_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t content_offset_ = 0;
  std::string problem_;
};

}  // namespace zorl2_inspect
