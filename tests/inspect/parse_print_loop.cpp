// What the speed of show is compared with: a loop that only parses the entries of a length-prefixed
// stream and prints them as JSON with the runtime, one line each.
#include <fcntl.h>
#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/io/zero_copy_stream_impl.h>
#include <google/protobuf/util/json_util.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "interface_entry.pb.h"

int main(int argc, char** argv) {
  namespace io = google::protobuf::io;
  if (argc != 2) return 2;
  io::FileInputStream file(open(argv[1], O_RDONLY), 1 << 20);
  zorl2::protobuf::IntfEntry message;
  std::string record;
  std::string json;
  io::CodedInputStream in(&file);
  in.SetTotalBytesLimit(0x7fffffff);
  std::uint32_t size = 0;
  google::protobuf::util::JsonPrintOptions options;
  options.preserve_proto_field_names = true;
  while (in.ReadVarint32(&size)) {
    if (!in.ReadString(&record, static_cast<int>(size))) return 1;
    if (!message.ParseFromString(record)) return 1;
    json.clear();
    if (!google::protobuf::util::MessageToJsonString(message, &json, options).ok()) return 1;
    json += '\n';
    std::fwrite(json.data(), 1, json.size(), stdout);
  }
  return 0;
}
