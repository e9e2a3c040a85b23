// Cap'n Proto: the message is built and read in place, without a parse. The first segment of a
// message and the buffer of the bytes are reused.
#include <capnp/message.h>
#include <capnp/serialize.h>

#include "bench/peers/fields.h"
#include "bench/peers/peer.h"
#include "entry.capnp.h"

namespace zorl2_peers {

namespace {

capnp::Text::Reader Text(const std::string& text) { return {text.c_str(), text.size()}; }

void ToMessage(const IntfEntry& entry, cp::Entry::Builder message) {
  message.setId(ZoridNumber(entry.getId()));
  message.setParent(ZoridNumber(entry.getParent()));
  const IntfEntry::GeneralInfo& general = entry.getGeneralInfo();
  message.setIntfName(Text(general.intf_name));
  message.setPhyAddr(Text(general.phy_addr));
  message.setBridgePortNumber(general.bridge_port_number);
  message.setRedundancyGroupId(general.redundancy_group_id);
  message.setRedundancyGroupPhyAddr(Text(general.redundancy_group_phy_addr));
  const IntfEntry::StatusInfo& status = entry.getStatusInfo();
  message.setAdminStatus(status.adminStatus);
  message.setOperationalStatus(status.operationalStatus);
  message.setLinkStatus(status.linkStatus);
  message.setOperationalSpeed(status.operationalSpeed);
  message.setExtraShutdown(status.extraShutdown);
  message.setExtraBlocking(status.extraBlocking);
  message.setConfigShutdown(status.configShutdown);
  const IntfEntry::PhysicalInfo& physical = entry.getPhysicalInfo();
  message.setIntfMtu(physical.intf_mtu);
  message.setEthSpeed(physical.eth_speed);
  message.setEthDuplexMode(physical.eth_duplex_mode);
  const IntfEntry::TypeInfo& type = entry.getTypeInfo();
  message.setInterfaceType(type.interfaceType);
  message.setIfL2Switching(type.interfaceFlags.if_l2_switching);
  message.setIfInBundle(type.interfaceFlags.if_in_bundle);
  message.setL2Bundle(type.interfaceFlags.l2_bundle);
  message.setL2SubIf(type.interfaceFlags.l2_sub_if);
  message.setPointToPoint(type.interfaceFlags.point_to_point);
  message.setIfMulticast(type.interfaceFlags.if_multicast);
  message.setVlanType(type.vlanType);
  unsigned i = 0;
  auto protocols =
      message.initShutdownProtos(static_cast<unsigned>(entry.getShutdownProtos().size()));
  for (const ProtocolType protocol : entry.getShutdownProtos()) protocols.set(i++, protocol);
  i = 0;
  auto blocks = message.initBlockInfo(static_cast<unsigned>(entry.getBlockInfo().size()));
  for (const IntfEntry::BlockInfo& block : entry.getBlockInfo()) {
    blocks[i].setProtocol(block.protocol);
    blocks[i++].setState(block.state);
  }
  message.setCategory(entry.getInterfaceCategory());
}

void Assign(std::string& to, capnp::Text::Reader text) { to.assign(text.begin(), text.size()); }

void ToRecord(cp::Entry::Reader message, IntfEntry& entry) {
  IntfEntryBuilder builder;
  builder.addZorId(Identifier(message.getId())).addParent(Identifier(message.getParent()));
  IntfEntry::GeneralInfo& general = EmptyGeneralInfo();
  Assign(general.intf_name, message.getIntfName());
  Assign(general.phy_addr, message.getPhyAddr());
  Assign(general.redundancy_group_phy_addr, message.getRedundancyGroupPhyAddr());
  general.redundancy_group_id = message.getRedundancyGroupId();
  general.bridge_port_number = message.getBridgePortNumber();
  builder.addGeneralInfo(general);
  builder.addStatusInfo({Number{message.getAdminStatus()}, Number{message.getOperationalStatus()},
                         Number{message.getLinkStatus()}, message.getOperationalSpeed(),
                         message.getExtraShutdown(), message.getExtraBlocking(),
                         message.getConfigShutdown()});
  builder.addPhysicalInfo(
      {message.getIntfMtu(), Number{message.getEthSpeed()}, Number{message.getEthDuplexMode()}});
  builder.addTypeInfo({Number{message.getInterfaceType()},
                       {message.getIfL2Switching(), message.getIfInBundle(), message.getL2Bundle(),
                        message.getL2SubIf(), message.getPointToPoint(), message.getIfMulticast()},
                       Number{message.getVlanType()}});
  for (const std::int32_t protocol : message.getShutdownProtos()) {
    builder.addShutdownProto(Number{protocol});
  }
  for (const cp::Block::Reader block : message.getBlockInfo()) {
    builder.addBlockInfo({Number{block.getProtocol()}, Number{block.getState()}});
  }
  entry = builder.setInterfaceCategory(Number{message.getCategory()}).Build();
}

class CapnProto final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    // The builder clears the words of the segment that it has used.
    capnp::MallocMessageBuilder message(
        kj::arrayPtr(reinterpret_cast<capnp::word*>(segment_.data()), segment_.size()));
    auto entries =
        message.initRoot<cp::EntryList>().initEntries(static_cast<unsigned>(records.size()));
    for (unsigned i = 0; i < records.size(); ++i) ToMessage(records[i], entries[i]);
    words_.resize(capnp::computeSerializedSizeInWords(message));
    const auto bytes = kj::arrayPtr(words_.data(), words_.size()).asBytes();
    kj::ArrayOutputStream stream(bytes);
    capnp::writeMessage(stream, message);
    return {reinterpret_cast<const char*>(bytes.begin()), bytes.size()};
  }

  // The bytes are aligned like a word.
  void Decode(std::string_view bytes, Records& records) override {
    capnp::FlatArrayMessageReader message(kj::arrayPtr(
        reinterpret_cast<const capnp::word*>(bytes.data()), bytes.size() / sizeof(capnp::word)));
    const auto entries = message.getRoot<cp::EntryList>().getEntries();
    records.resize(entries.size());
    for (unsigned i = 0; i < entries.size(); ++i) ToRecord(entries[i], records[i]);
  }

 private:
  std::vector<std::uint64_t> segment_ = std::vector<std::uint64_t>(8192);
  std::vector<std::uint64_t> words_;
};

}  // namespace

std::unique_ptr<Peer> MakeCapnProto() { return std::make_unique<CapnProto>(); }

}  // namespace zorl2_peers
