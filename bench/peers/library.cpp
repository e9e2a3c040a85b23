// This library: the converter and the runtime, with one message that is reused.
#include <stdexcept>

#include "bench/peers/delimited.h"
#include "convert/intf_entry_converter.h"

namespace zorl2_peers {

namespace {

class Library final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    bytes_.clear();
    for (const IntfEntry& record : records) {
      converter_.Convert(record, message_);
      Append(message_, bytes_);
    }
    return bytes_;
  }

  void Decode(std::string_view bytes, Records& records) override {
    ReadStream(bytes, records, [this](std::string_view& rest, IntfEntry& record) {
      Take(rest, message_);
      if (!converter_.Convert(message_, record)) throw std::runtime_error("missing field");
    });
  }

 private:
  IntfEntryConverter converter_;
  zorl2::protobuf::IntfEntry message_;
  std::string bytes_;
};

}  // namespace

std::unique_ptr<Peer> MakeLibrary() { return std::make_unique<Library>(); }

}  // namespace zorl2_peers
