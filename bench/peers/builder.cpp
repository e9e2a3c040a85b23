// IntfEntryBuilder alone, for scale: it makes the native records, as every decoder without the
// converter must, and reads no bytes.
#include "native/intf_entry_builder.h"

#include "bench/peers/peer.h"

namespace zorl2_peers {

namespace {

class Builder final : public Peer {
 public:
  void Prepare(const Records& records) override { source_ = records; }

  std::string_view Encode(const Records&) override { return {}; }

  void Decode(std::string_view, Records& records) override {
    records.resize(source_.size());
    for (std::size_t i = 0; i < source_.size(); ++i) {
      const IntfEntry& entry = source_[i];
      IntfEntryBuilder builder;
      builder.addZorId(entry.getId()).addParent(entry.getParent());
      builder.addGeneralInfo(entry.getGeneralInfo()).addStatusInfo(entry.getStatusInfo());
      builder.addPhysicalInfo(entry.getPhysicalInfo()).addTypeInfo(entry.getTypeInfo());
      for (const ProtocolType protocol : entry.getShutdownProtos()) {
        builder.addShutdownProto(protocol);
      }
      for (const IntfEntry::BlockInfo& block : entry.getBlockInfo()) builder.addBlockInfo(block);
      records[i] = builder.setInterfaceCategory(entry.getInterfaceCategory()).Build();
    }
  }

 private:
  Records source_;
};

}  // namespace

std::unique_ptr<Peer> MakeBuilder() { return std::make_unique<Builder>(); }

}  // namespace zorl2_peers
