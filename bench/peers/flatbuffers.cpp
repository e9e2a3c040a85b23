// FlatBuffers: its object API, between the record and the bytes. The builder and an object for each
// direction are reused. The reader verifies the bytes first, because they may come from outside.
#include <stdexcept>

#include "bench/peers/fields.h"
#include "bench/peers/peer.h"
#include "entry_generated.h"

namespace zorl2_peers {

namespace {

// The structure of the schema with the members of the part, in their order.
template <typename Struct, typename Part>
Struct Make(const Part& part) {
  return std::apply([](const auto&... member) { return Struct(member...); }, Members(part));
}

void ToObject(const IntfEntry& entry, fb::EntryT& object) {
  object.id = ZoridNumber(entry.getId());
  object.parent = ZoridNumber(entry.getParent());
  const IntfEntry::GeneralInfo& general = entry.getGeneralInfo();
  object.intf_name = general.intf_name;
  object.phy_addr = general.phy_addr;
  object.bridge_port_number = general.bridge_port_number;
  object.redundancy_group_id = general.redundancy_group_id;
  object.redundancy_group_phy_addr = general.redundancy_group_phy_addr;
  object.status = Make<fb::Status>(entry.getStatusInfo());
  object.physical = Make<fb::Physical>(entry.getPhysicalInfo());
  const IntfEntry::TypeInfo& type = entry.getTypeInfo();
  object.type = fb::Type(type.interfaceType, Make<fb::Flags>(type.interfaceFlags), type.vlanType);
  object.shutdown_protos.assign(entry.getShutdownProtos().begin(), entry.getShutdownProtos().end());
  object.block_info.clear();
  for (const IntfEntry::BlockInfo& block : entry.getBlockInfo()) {
    object.block_info.push_back(Make<fb::Block>(block));
  }
  object.category = entry.getInterfaceCategory();
}

// Moves the strings out of the object: unpacking allocates new ones in any case.
void ToRecord(fb::EntryT& object, IntfEntry& entry) {
  const fb::Status& status = object.status;
  const fb::Physical& physical = object.physical;
  const fb::Flags& flags = object.type.flags();
  IntfEntryBuilder builder;
  builder.addZorId(Identifier(object.id)).addParent(Identifier(object.parent));
  builder.addGeneralInfo({std::move(object.intf_name), std::move(object.phy_addr),
                          object.redundancy_group_id, std::move(object.redundancy_group_phy_addr),
                          object.bridge_port_number});
  builder.addStatusInfo({Number{status.admin_status()}, Number{status.operational_status()},
                         Number{status.link_status()}, status.operational_speed(),
                         status.extra_shutdown(), status.extra_blocking(),
                         status.config_shutdown()});
  builder.addPhysicalInfo(
      {physical.intf_mtu(), Number{physical.eth_speed()}, Number{physical.eth_duplex_mode()}});
  builder.addTypeInfo({Number{object.type.interface_type()},
                       {flags.if_l2_switching(), flags.if_in_bundle(), flags.l2_bundle(),
                        flags.l2_sub_if(), flags.point_to_point(), flags.if_multicast()},
                       Number{object.type.vlan_type()}});
  for (const int protocol : object.shutdown_protos) builder.addShutdownProto(Number{protocol});
  for (const fb::Block& block : object.block_info) {
    builder.addBlockInfo({Number{block.protocol()}, Number{block.state()}});
  }
  entry = builder.setInterfaceCategory(Number{object.category}).Build();
}

class FlatBuffers final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    builder_.Clear();
    offsets_.clear();
    for (const IntfEntry& record : records) {
      ToObject(record, packed_);
      offsets_.push_back(fb::Entry::Pack(builder_, &packed_));
    }
    builder_.Finish(fb::CreateEntryListDirect(builder_, &offsets_));
    return {reinterpret_cast<const char*>(builder_.GetBufferPointer()), builder_.GetSize()};
  }

  void Decode(std::string_view bytes, Records& records) override {
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    flatbuffers::Verifier verifier(data, bytes.size());
    if (!fb::VerifyEntryListBuffer(verifier)) throw std::runtime_error("malformed buffer");
    const auto& entries = *fb::GetEntryList(data)->entries();
    records.resize(entries.size());
    for (flatbuffers::uoffset_t i = 0; i < entries.size(); ++i) {
      entries[i]->UnPackTo(&unpacked_);
      ToRecord(unpacked_, records[i]);
    }
  }

 private:
  flatbuffers::FlatBufferBuilder builder_;
  std::vector<flatbuffers::Offset<fb::Entry>> offsets_;
  fb::EntryT packed_;
  fb::EntryT unpacked_;
};

}  // namespace

std::unique_ptr<Peer> MakeFlatBuffers() { return std::make_unique<FlatBuffers>(); }

}  // namespace zorl2_peers
