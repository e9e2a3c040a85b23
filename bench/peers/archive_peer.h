// A peer that uses two archives to write values to a C++ stream and read them from one. Each list
// needs new archives, because they cannot be reset. The string is reused.
#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "bench/peers/fields.h"
#include "bench/peers/peer.h"

namespace zorl2_peers {

// Appends to a string. A std::ostringstream would copy its bytes out.
class AppendBuffer final : public std::streambuf {
 public:
  explicit AppendBuffer(std::string& bytes) : bytes_(bytes) {}

 protected:
  std::streamsize xsputn(const char* data, std::streamsize size) override {
    bytes_.append(data, static_cast<std::size_t>(size));
    return size;
  }
  int_type overflow(int_type next) override {
    bytes_.push_back(traits_type::to_char_type(next));
    return next;
  }

 private:
  std::string& bytes_;
};

class ReadBuffer final : public std::streambuf {
 public:
  explicit ReadBuffer(std::string_view bytes) {
    char* start = const_cast<char*>(bytes.data());  // The buffer only reads.
    setg(start, start, start + bytes.size());
  }
};

template <typename Output, typename Input>
class ArchivePeer final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    bytes_.clear();
    AppendBuffer buffer(bytes_);
    std::ostream stream(&buffer);
    Output archive(stream);
    const auto write = [&archive](const auto& scalar) { archive& scalar; };
    write(records.size());
    for (const IntfEntry& record : records) {
      WriteEntry(record, [&write](const auto& value) { VisitScalars(value, write); });
    }
    return bytes_;
  }

  void Decode(std::string_view bytes, Records& records) override {
    ReadBuffer buffer(bytes);
    std::istream stream(&buffer);
    Input archive(stream);
    const auto read = [&archive](auto& scalar) { archive& scalar; };
    std::size_t count = 0;
    read(count);
    records.resize(count);
    for (IntfEntry& record : records) {
      ReadEntry(record, [&read](auto& value) { VisitScalars(value, read); });
    }
  }

 private:
  std::string bytes_;
};

}  // namespace zorl2_peers
