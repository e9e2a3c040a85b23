#include "tools/input/record_stream.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include "tools/input/waiting.h"

namespace zorl2_inspect {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20;
// The bytes of a 32-bit length.
constexpr std::size_t kLongestPrefix = 5;
constexpr std::chrono::milliseconds kPause(100);

}  // namespace

RecordStream::RecordStream(int descriptor, Options options)
    : descriptor_(descriptor), options_(std::move(options)), buffer_(kBufferSize) {}

void RecordStream::Fill() {
  if (options_.before_wait && !HasInput(descriptor_, std::chrono::milliseconds(0)))
    options_.before_wait();
  if (options_.follow) {
    // A signal that arrives before a read would not end it.
    while (!Interrupted() && !HasInput(descriptor_, kPause)) {
      if (options_.before_wait) options_.before_wait();
    }
    interrupted_ = at_end_ = Interrupted();
    if (interrupted_) return;
  }
  const ssize_t got = read(descriptor_, buffer_.data() + end_, buffer_.size() - end_);
  if (got > 0) {
    end_ += static_cast<std::size_t>(got);
  } else if (got < 0) {
    read_error_ = errno == EINTR ? 0 : errno;
    at_end_ = read_error_ != 0;
  } else if (options_.follow && CanGrow(descriptor_)) {
    if (options_.before_wait) options_.before_wait();
    Pause(kPause);
  } else {
    at_end_ = true;
  }
}

bool RecordStream::Want(std::size_t count) {
  if (end_ - begin_ >= count) return true;
  std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
  buffer_offset_ += begin_;
  end_ -= begin_;
  begin_ = 0;
  while (end_ < count && !at_end_) {
    // Doubles instead of allocating what the length claims, so that a false length costs no memory.
    if (end_ == buffer_.size()) buffer_.resize(buffer_.size() * 2);
    Fill();
  }
  return end_ >= count;
}

RecordStream::Status RecordStream::Damaged(Status status, std::string found, std::string expected) {
  if (interrupted_) return Status::kEnd;
  problem_ = {};
  problem_.offset = offset_;
  problem_.found = std::move(found);
  problem_.expected = std::move(expected);
  if (read_error_ != 0) {
    problem_.found = fmt::format("cannot read: {}", std::strerror(read_error_));
    problem_.expected.clear();
  }
  return status;
}

RecordStream::Status RecordStream::Skip(std::uint64_t length) {
  std::uint64_t left = length;
  while (left > 0) {
    if (begin_ == end_ && !Want(1)) {
      return Damaged(Status::kBroken, fmt::format("{} bytes", length - left),
                     fmt::format("{} bytes of a record", length));
    }
    const std::uint64_t step = std::min<std::uint64_t>(left, end_ - begin_);
    begin_ += static_cast<std::size_t>(step);
    left -= step;
  }
  return Damaged(Status::kSkipped, fmt::format("{} bytes", length),
                 fmt::format("at most {} bytes", options_.longest));
}

std::string_view RecordStream::Beginning(std::size_t most) {
  Want(1);
  return Unread().substr(0, most);
}

RecordStream::Status RecordStream::NextLine(std::string_view* line) {
  offset_ = content_offset_ = consumed();
  std::size_t searched = 0;
  while (Want(searched + 1)) {
    const std::string_view there = Unread();
    const std::size_t stop = there.find('\n', searched);
    if (stop != there.npos) {
      *line = there.substr(0, stop);
      begin_ += stop + 1;
      return Status::kRecord;
    }
    searched = there.size();
    if (searched > options_.longest) return SkipLine();
  }
  if (interrupted_ || read_error_ != 0) return Damaged(Status::kBroken, "", "");
  *line = Unread();
  begin_ = end_;
  return line->empty() ? Status::kEnd : Status::kRecord;
}

RecordStream::Status RecordStream::SkipLine() {
  std::uint64_t size = 0;
  do {
    const std::size_t stop = Unread().find('\n');
    size += std::min(stop, end_ - begin_);
    begin_ += std::min(stop, end_ - begin_ - 1) + 1;
    if (stop != std::string_view::npos) break;
  } while (Want(1));
  return Damaged(Status::kSkipped, fmt::format("a line of {} bytes", size),
                 fmt::format("at most {} bytes", options_.longest));
}

RecordStream::Status RecordStream::Next(std::string_view* record) {
  if (lines_) return NextLine(record);
  offset_ = consumed();
  std::uint64_t length = 0;
  std::size_t size = 0;
  for (bool more = true; more; ++size) {
    if (size == kLongestPrefix) {
      return Damaged(Status::kBroken, "a varint of more than five bytes", "the length of a record");
    }
    // Byte by byte, because there may be nothing after a short record yet.
    if (!Want(size + 1)) {
      if (size == 0 && read_error_ == 0) return Status::kEnd;
      return Damaged(Status::kBroken, "the end of the stream", "the length of a record");
    }
    const auto byte = static_cast<std::uint8_t>(buffer_[begin_ + size]);
    length |= static_cast<std::uint64_t>(byte & 0x7f) << (7 * size);
    more = byte >= 0x80;
  }
  begin_ += size;
  content_offset_ = consumed();
  if (length > options_.longest) return Skip(length);
  if (!Want(static_cast<std::size_t>(length))) {
    return Damaged(Status::kBroken, fmt::format("{} bytes", end_ - begin_),
                   fmt::format("{} bytes of a record", length));
  }
  *record = std::string_view(buffer_.data() + begin_, static_cast<std::size_t>(length));
  begin_ += static_cast<std::size_t>(length);
  return Status::kRecord;
}

}  // namespace zorl2_inspect
