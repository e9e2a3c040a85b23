// The primitives of the wire format, with the limits that the runtime's parser has.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tools/wire/wire_type.h"

namespace zorl2_inspect {

// Reads forward through bytes. Every function that reads returns false without moving if the bytes
// do not have what it reads; problem() is then what they have instead.
class WireReader {
 public:
  explicit WireReader(std::string_view bytes) : bytes_(bytes) {}

  bool AtEnd() const { return position_ == bytes_.size(); }
  std::size_t position() const { return position_; }
  std::size_t left() const { return bytes_.size() - position_; }
  const char* problem() const { return problem_; }

  // How many bytes more than needed the last varint has, and whether it has bits above the 64th,
  // which are dropped.
  std::size_t padding() const { return padding_; }
  bool overflowed() const { return overflowed_; }

  // Up to ten bytes; bits above the 64th are dropped.
  bool Varint(std::uint64_t* value) { return ReadVarint(10, value); }

  // A field number above 0 and one of the six wire types, in up to five bytes.
  bool Tag(std::uint32_t* number, int* wire_type) {
    const std::size_t start = position_;
    std::uint64_t tag = 0;
    if (!ReadVarint(5, &tag)) return false;
    *number = static_cast<std::uint32_t>(tag) >> 3;
    *wire_type = static_cast<int>(tag & 7);
    if (*number == 0) return Reject(start, "the field number 0");
    if (*wire_type > kFixed32) return Reject(start, "a wire type that does not exist");
    return true;
  }

  // A length that the runtime accepts, also if fewer bytes are left.
  bool Length(std::size_t* length) {
    const std::size_t start = position_;
    std::uint64_t value = 0;
    if (!ReadVarint(5, &value)) return false;
    if (value > kLongest) return Reject(start, "a length of two gigabytes or more");
    *length = static_cast<std::size_t>(value);
    return true;
  }

  bool Fixed(std::size_t width, std::uint64_t* value) {
    if (left() < width) return Reject(position_, "the end of the bytes");
    *value = 0;
    for (std::size_t i = width; i-- > 0;) {
      *value = *value << 8 | static_cast<std::uint8_t>(bytes_[position_ + i]);
    }
    position_ += width;
    return true;
  }

  // At most left().
  std::string_view Take(std::size_t length) {
    position_ += length;
    return bytes_.substr(position_ - length, length);
  }

 private:
  static constexpr std::uint64_t kLongest = 0x7fffffff - 16;

  bool Reject(std::size_t start, const char* problem) {
    position_ = start;
    problem_ = problem;
    return false;
  }

  bool ReadVarint(int longest, std::uint64_t* value) {
    const std::size_t start = position_;
    *value = 0;
    int last = 0;
    for (int i = 0; i < longest; ++i) {
      if (AtEnd()) return Reject(start, "the end of the bytes");
      const auto byte = static_cast<std::uint8_t>(bytes_[position_++]);
      *value |= static_cast<std::uint64_t>(byte & 0x7f) << (7 * i);
      if ((byte & 0x7f) != 0) last = i;
      if (byte >= 0x80) continue;
      padding_ = static_cast<std::size_t>(i - last);
      overflowed_ = i == 9 && byte > 1;
      return true;
    }
    return Reject(start, longest == 5 ? "a varint of more than five bytes"
                                      : "a varint of more than ten bytes");
  }

  std::string_view bytes_;
  std::size_t position_ = 0;
  std::size_t padding_ = 0;
  bool overflowed_ = false;
  const char* problem_ = "";
};

}  // namespace zorl2_inspect
