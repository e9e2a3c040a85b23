// What the speed of stats and roundtrip is compared with: a loop that only parses, converts both
// ways and serializes the entries of a length-prefixed stream. Prints the number of entries.
#include <fcntl.h>
#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/io/zero_copy_stream_impl.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "convert/intf_entry_converter.h"

int main(int argc, char** argv) {
  namespace io = google::protobuf::io;
  if (argc != 2) return 2;
  io::FileInputStream file(open(argv[1], O_RDONLY), 1 << 20);
  IntfEntryConverter converter;
  zorl2::protobuf::IntfEntry message;
  zorl2::protobuf::IntfEntry back;
  IntfEntry entry;
  std::string record;
  std::string bytes;
  std::uint64_t count = 0;
  std::uint64_t written = 0;
  io::CodedInputStream in(&file);
  in.SetTotalBytesLimit(0x7fffffff);
  std::uint32_t size = 0;
  while (in.ReadVarint32(&size)) {
    if (!in.ReadString(&record, static_cast<int>(size))) return 1;
    if (!message.ParseFromString(record)) return 1;
    if (!converter.Convert(message, entry) || !converter.Convert(entry, back)) return 1;
    if (!back.SerializeToString(&bytes)) return 1;
    written += bytes.size();
    ++count;
  }
  std::printf("%llu %llu\n", static_cast<unsigned long long>(count),
              static_cast<unsigned long long>(written));
  return 0;
}
