// Length-delimited records from a file descriptor, one at a time, in memory that does not grow with
// the stream.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/text/error.h"

namespace zorl2_inspect {

class RecordStream {
 public:
  enum class Status {
    kRecord,   // *record holds it until the next call
    kSkipped,  // longer than the limit; problem() says so, and the next record follows
    kBroken,   // no record can be found from here on; problem() says why
    kEnd,
  };

  // Does not own the descriptor. No record longer than the limit is ever held.
  RecordStream(int descriptor, std::size_t longest);

  Status Next(std::string_view* record);

  // The offsets of the last record's length and of its first byte.
  std::uint64_t offset() const { return offset_; }
  std::uint64_t content_offset() const { return content_offset_; }
  // How many bytes have been read as records.
  std::uint64_t consumed() const { return buffer_offset_ + begin_; }
  const Problem& problem() const { return problem_; }

 private:
  // Makes at least so many bytes available after begin_, unless the stream ends before.
  bool Want(std::size_t count);
  Status Damaged(Status status, std::string found, std::string expected);
  Status Skip(std::uint64_t length);

  int descriptor_;
  std::size_t longest_;
  std::vector<char> buffer_;
  // The bytes that are not part of a record yet are [begin_, end_) of the buffer. The first byte of
  // the buffer is at buffer_offset_ of the stream.
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::uint64_t buffer_offset_ = 0;
  bool at_end_ = false;
  int read_error_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t content_offset_ = 0;
  Problem problem_;
};

}  // namespace zorl2_inspect
