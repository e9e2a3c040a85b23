// Records from a file descriptor, one at a time, in memory that does not grow with the stream.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
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
    kEnd,      // also after an interruption in the middle of a record
  };

  struct Options {
    std::size_t longest;                // No longer record is ever held.
    bool follow = false;                // Wait at the end for more, until Interrupted().
    std::function<void()> before_wait;  // Called before the stream waits. May be empty.
  };

  // Does not own the descriptor.
  RecordStream(int descriptor, Options options);

  // The first bytes that arrive, at most as many; none only at the end.
  // Before the first call of Next(), which reads them again.
  std::string_view Beginning(std::size_t most);

  // From now on the records are lines instead of bytes with their length before them.
  void ReadLines() { lines_ = true; }

  Status Next(std::string_view* record);

  // The offsets of the last record's length and of its first byte; the same for a line.
  std::uint64_t offset() const { return offset_; }
  std::uint64_t content_offset() const { return content_offset_; }
  // How many bytes have been read as records.
  std::uint64_t consumed() const { return buffer_offset_ + begin_; }
  const Problem& problem() const { return problem_; }
  bool cannot_read() const { return read_error_ != 0; }

 private:
  std::string_view Unread() const { return {buffer_.data() + begin_, end_ - begin_}; }
  // Makes at least so many bytes available after begin_, unless the stream ends before.
  bool Want(std::size_t count);
  // Reads what is there into the buffer; waits if there is nothing. Sets at_end_ at the end.
  void Fill();
  Status NextLine(std::string_view* line);
  // Drops what is left of a line that is too long.
  Status SkipLine();
  Status Damaged(Status status, std::string found, std::string expected);
  Status Skip(std::uint64_t length);

  int descriptor_;
  Options options_;
  std::vector<char> buffer_;
  // The bytes that are not part of a record yet are [begin_, end_) of the buffer. The first byte of
  // the buffer is at buffer_offset_ of the stream.
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::uint64_t buffer_offset_ = 0;
  bool at_end_ = false;
  bool lines_ = false;
  bool interrupted_ = false;
  int read_error_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t content_offset_ = 0;
  Problem problem_;
};

}  // namespace zorl2_inspect
