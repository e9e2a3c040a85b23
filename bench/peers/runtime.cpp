// The protobuf runtime alone, for scale: it serializes and parses messages and never sees a native
// record.
#include <stdexcept>

#include "bench/peers/delimited.h"
#include "convert/intf_entry_converter.h"

namespace zorl2_peers {

namespace {

class Runtime final : public Peer {
 public:
  void Prepare(const Records& records) override {
    filled_.resize(records.size());
    parsed_.resize(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) converter_.Convert(records[i], filled_[i]);
  }

  std::string_view Encode(const Records&) override {
    bytes_.clear();
    for (const auto& message : filled_) Append(message, bytes_);
    return bytes_;
  }

  void Decode(std::string_view bytes, Records&) override {
    for (auto& message : parsed_) Take(bytes, message);
  }

  void Collect(Records& records) override {
    records.resize(parsed_.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
      if (!converter_.Convert(parsed_[i], records[i])) throw std::runtime_error("missing field");
    }
  }

 private:
  IntfEntryConverter converter_;
  std::vector<zorl2::protobuf::IntfEntry> filled_;
  std::vector<zorl2::protobuf::IntfEntry> parsed_;
  std::string bytes_;
};

}  // namespace

std::unique_ptr<Peer> MakeRuntime() { return std::make_unique<Runtime>(); }

}  // namespace zorl2_peers
