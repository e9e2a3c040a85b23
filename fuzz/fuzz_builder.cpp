// Reads a program from the input, runs it with the builder and with a plain record, and compares
// the two. Then converts the entry, whose enumerations may have any number.
#include <cstring>

#include "convert/intf_entry_converter.h"
#include "fuzz/harness.h"
#include "native/intf_entry_builder.h"
#include "tests/differential/part_converters.h"

namespace pb = zorl2::protobuf;

namespace {

// Reads values from the beginning of the input. After its end every value is zero.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  bool Empty() const { return left_ == 0; }

  std::uint64_t Number(std::size_t bytes) {
    std::uint64_t value = 0;
    for (; bytes > 0 && left_ > 0; --bytes, --left_) value = value << 8 | *data_++;
    return value;
  }

  // Reads one signed byte, so that listed numbers are frequent; after 0x7f reads four bytes.
  template <typename Enumeration>
  Enumeration Enum() {
    const auto byte = static_cast<std::int8_t>(Number(1));
    return static_cast<Enumeration>(byte == 0x7f ? static_cast<std::int32_t>(Number(4)) : byte);
  }

  bool Flag() { return Number(1) % 2 == 1; }

  std::string Text() {
    std::string text(Number(1) % 64, '\0');
    for (char& c : text) c = static_cast<char>(Number(1));
    return text;
  }

  zorid_t Id() {
    zorid_t id;
    for (std::uint8_t& octet : id.octets) octet = static_cast<std::uint8_t>(Number(1));
    return id;
  }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
};

void Step(Input& input, IntfEntryBuilder& builder, oracle::EntryRecord& record) {
  switch (input.Number(1) % 10) {
    case 0:
      builder.addZorId(record.id = input.Id());
      break;
    case 1:
      builder.addParent(record.parent = input.Id());
      break;
    case 2: {
      IntfEntry::GeneralInfo& g = record.generalInfo;
      g.intf_name = input.Text();
      g.phy_addr = input.Text();
      g.redundancy_group_id = static_cast<std::uint32_t>(input.Number(4));
      g.redundancy_group_phy_addr = input.Text();
      g.bridge_port_number = static_cast<std::uint16_t>(input.Number(2));
      if (input.Flag()) {
        builder.addGeneralInfo(g);
      } else {
        builder.addGeneralInfo(IntfEntry::GeneralInfo(g));
      }
      break;
    }
    case 3: {
      IntfEntry::StatusInfo& s = record.statusInfo;
      s.adminStatus = input.Enum<IntfEntry::AdminStatus>();
      s.operationalStatus = input.Enum<IntfEntry::OperationalStatus>();
      s.linkStatus = input.Enum<IntfEntry::LinkStatus>();
      s.operationalSpeed = static_cast<std::uint32_t>(input.Number(4));
      s.extraShutdown = input.Flag();
      s.extraBlocking = input.Flag();
      s.configShutdown = input.Flag();
      builder.addStatusInfo(s);
      break;
    }
    case 4:
      record.physicalInfo.intf_mtu = input.Number(8);
      record.physicalInfo.eth_speed = input.Enum<IntfEntry::EthernetSpeed>();
      record.physicalInfo.eth_duplex_mode = input.Enum<IntfEntry::EthernetDuplexMode>();
      builder.addPhysicalInfo(record.physicalInfo);
      break;
    case 5: {
      IntfEntry::InterfaceFlags& f = record.typeInfo.interfaceFlags;
      record.typeInfo.interfaceType = input.Enum<IntfEntry::InterfaceType>();
      record.typeInfo.vlanType = input.Enum<IntfEntry::VlanType>();
      f.if_l2_switching = input.Flag();
      f.if_in_bundle = input.Flag();
      f.l2_bundle = input.Flag();
      f.l2_sub_if = input.Flag();
      f.point_to_point = input.Flag();
      f.if_multicast = input.Flag();
      builder.addTypeInfo(record.typeInfo);
      break;
    }
    case 6:
      record.shutdownProtos.push_back(input.Enum<ProtocolType>());
      builder.addShutdownProto(record.shutdownProtos.back());
      break;
    case 7: {
      const auto protocol = input.Enum<ProtocolType>();
      record.blockInfo.push_back({protocol, input.Enum<BlockState>()});
      builder.addBlockInfo(record.blockInfo.back());
      break;
    }
    case 8:
      builder.setInterfaceCategory(record.interfaceCategory = input.Enum<InterfaceCategory>());
      break;
    default: {
      // Continues with a new builder from the finished entry, which must become empty.
      IntfEntry entry = builder.Build();
      builder = IntfEntryBuilder(std::move(entry));
      oracle::EntryRecord left = record;
      left.generalInfo.intf_name.clear();
      left.generalInfo.phy_addr.clear();
      left.generalInfo.redundancy_group_phy_addr.clear();
      left.shutdownProtos.clear();
      left.blockInfo.clear();
      // NOLINTNEXTLINE(bugprone-use-after-move): the state of a moved-from entry is promised.
      if (proof::Text(entry) != proof::Text(left)) proof::Require("left: " + proof::Text(entry));
    }
  }
}

template <typename Converter, typename Model, typename Message, typename Record>
void ToMessage(const Record& record) {
  Message message;
  proof::Require(proof::DifferenceToMessage<Converter>(record, Model{}, message));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  proof::Silence();
  Input input(data, size);
  IntfEntryBuilder builder;
  oracle::EntryRecord record;
  while (!input.Empty()) Step(input, builder, record);
  const IntfEntry built = builder.Build();
  if (proof::Text(built) != proof::Text(record)) {
    proof::Require("built: " + proof::Text(built) + "\n   of: " + proof::Text(record));
  }
  ToMessage<IntfEntryConverter, oracle::Entry, pb::IntfEntry>(record);
  ToMessage<proof::GeneralConverter, oracle::General, pb::GeneralInfo>(record.generalInfo);
  ToMessage<proof::StatusConverter, oracle::Status, pb::StatusInfo>(record.statusInfo);
  ToMessage<proof::PhysicalConverter, oracle::Physical, pb::PhysicalInfo>(record.physicalInfo);
  ToMessage<proof::TypeConverter, oracle::Type, pb::TypeInfo>(record.typeInfo);
  for (const IntfEntry::BlockInfo& block : record.blockInfo) {
    ToMessage<proof::BlockConverter, oracle::Block, pb::BlockInfo>(block);
  }

  // Puts the same numbers into messages with code that does not check them.
  oracle::Status status{record.statusInfo.adminStatus,
                        record.statusInfo.operationalStatus,
                        record.statusInfo.linkStatus,
                        1U,
                        true,
                        false,
                        true};
  pb::StatusInfo message;
  proof::Fill(status, message);
  proof::Require(
      proof::DifferenceToNative<proof::StatusConverter>(status, message, record.statusInfo));
  oracle::Physical physical{2U, record.physicalInfo.eth_speed, record.physicalInfo.eth_duplex_mode};
  pb::PhysicalInfo physicalMessage;
  proof::Fill(physical, physicalMessage);
  proof::Require(proof::DifferenceToNative<proof::PhysicalConverter>(physical, physicalMessage,
                                                                     record.physicalInfo));
  return 0;
}
