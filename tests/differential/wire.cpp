#include "tests/differential/wire.h"

namespace pb = zorl2::protobuf;

namespace proof {

namespace {

void Varint(std::string& out, std::uint64_t value) {
  while (value >= 128) {
    out.push_back(static_cast<char>(value % 128 + 128));
    value /= 128;
  }
  out.push_back(static_cast<char>(value));
}

void Put(std::string& out, unsigned number, std::uint64_t value) {
  Varint(out, number * 8);
  Varint(out, value);
}

// An enumeration is a 64-bit number with its sign.
void Put(std::string& out, unsigned number, std::int32_t value) {
  Put(out, number, static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
}
void Put(std::string& out, unsigned number, std::uint32_t value) {
  Put(out, number, std::uint64_t{value});
}
void Put(std::string& out, unsigned number, bool value) { Put(out, number, std::uint64_t{value}); }

void Put(std::string& out, unsigned number, const std::string& bytes) {
  Varint(out, number * 8 + 2);
  Varint(out, bytes.size());
  out += bytes;
}

template <typename Message>
auto Put(std::string& out, unsigned number, const Message& message)
    -> decltype(Encode(message), void()) {
  Put(out, number, Encode(message));
}

template <typename Value>
void Field(std::string& out, unsigned number, const std::optional<Value>& value) {
  if (value) Put(out, number, *value);
}

}  // namespace

// The fields of each message that are not repeated: the number, the member of the model and the
// accessor of the generated class. NESTED is a message, SCALAR is anything else.
#define GENERAL(SCALAR, NESTED)                       \
  SCALAR(1, intf_name, intf_name)                     \
  SCALAR(2, phy_addr, phy_addr)                       \
  SCALAR(3, bridge_port_number, bridge_port_number)   \
  SCALAR(4, redundancy_group_id, redundancy_group_id) \
  SCALAR(5, redundancy_group_phy_addr, redundancy_group_phy_addr)
#define STATUS(SCALAR, NESTED)                    \
  SCALAR(1, adminStatus, adminstatus)             \
  SCALAR(2, operationalStatus, operationalstatus) \
  SCALAR(3, linkStatus, linkstatus)               \
  SCALAR(4, operationalSpeed, operationalspeed)   \
  SCALAR(5, extraShutdown, extrashutdown)         \
  SCALAR(6, extraBlocking, extrablocking)         \
  SCALAR(7, configShutdown, configshutdown)
#define PHYSICAL(SCALAR, NESTED)  \
  SCALAR(1, intf_mtu, intf_mtu)   \
  SCALAR(2, eth_speed, eth_speed) \
  SCALAR(3, eth_duplex_mode, eth_duplex_mode)
#define FLAGS(SCALAR, NESTED)                 \
  SCALAR(1, if_l2_switching, if_l2_switching) \
  SCALAR(2, if_in_bundle, if_in_bundle)       \
  SCALAR(3, l2_bundle, l2_bundle)             \
  SCALAR(4, l2_sub_if, l2_sub_if)             \
  SCALAR(5, point_to_point, point_to_point)   \
  SCALAR(6, if_multicast, if_multicast)
#define TYPE(SCALAR, NESTED)                \
  SCALAR(1, interfaceType, interfacetype)   \
  NESTED(2, interfaceFlags, interfaceflags) \
  SCALAR(3, vlanType, vlantype)
#define BLOCK(SCALAR, NESTED)   \
  SCALAR(1, protocol, protocol) \
  SCALAR(2, state, state)
#define CATEGORIES(SCALAR, NESTED) \
  SCALAR(1, l1, l1)                \
  SCALAR(2, l2, l2)                \
  SCALAR(3, vp, vp)                \
  SCALAR(4, l2_sub_if, l2_sub_if)  \
  SCALAR(5, virtual_if, virtual_if)
#define CLIENT(SCALAR, NESTED)            \
  SCALAR(1, clientAddress, clientaddress) \
  SCALAR(2, protocolType, protocoltype)   \
  NESTED(3, intfCategory, intfcategory)   \
  SCALAR(4, token, token)
#define LAG(SCALAR, NESTED)         \
  NESTED(1, lag, lag)               \
  NESTED(2, member, member)         \
  SCALAR(3, token, token)           \
  SCALAR(4, collecting, collecting) \
  SCALAR(5, distributing, distributing)
#define STATE(SCALAR, NESTED) \
  NESTED(1, zorid, zorid)     \
  SCALAR(2, state, state)

#define ENCODE(number, member, accessor) Field(out, number, m.member);
#define FILL(number, member, accessor) \
  if (m.member) p.set_##accessor(static_cast<decltype(p.accessor())>(*m.member));
#define FILL_NESTED(number, member, accessor) \
  if (m.member) Fill(*m.member, *p.mutable_##accessor());
#define READ(number, member, accessor) \
  if (p.has_##accessor()) m.member = p.accessor();
#define READ_NESTED(number, member, accessor) \
  if (p.has_##accessor()) m.member = Read(p.accessor());

#define DEFINE_ENCODE(Model, FIELDS)           \
  std::string Encode(const oracle::Model& m) { \
    std::string out;                           \
    FIELDS(ENCODE, ENCODE)                     \
    return out;                                \
  }
#define DEFINE_FILL_AND_READ(Model, Message, FIELDS)                                               \
  void Fill(const oracle::Model& m, pb::Message& p){FIELDS(FILL, FILL_NESTED)} oracle::Model Read( \
      const pb::Message& p) {                                                                      \
    oracle::Model m;                                                                               \
    FIELDS(READ, READ_NESTED)                                                                      \
    return m;                                                                                      \
  }
#define DEFINE(Model, Message, FIELDS) \
  DEFINE_ENCODE(Model, FIELDS)         \
  DEFINE_FILL_AND_READ(Model, Message, FIELDS)

std::string Encode(const oracle::Zorid& m) {
  std::string packed;
  for (const std::uint32_t value : m.value) Varint(packed, value);
  std::string out;
  if (!m.value.empty()) Put(out, 1, packed);
  return out;
}
void Fill(const oracle::Zorid& m, pb::Zorid& p) {
  for (const std::uint32_t value : m.value) p.add_value(value);
}
oracle::Zorid Read(const pb::Zorid& p) { return {{p.value().begin(), p.value().end()}}; }

DEFINE(General, GeneralInfo, GENERAL)
DEFINE(Status, StatusInfo, STATUS)
DEFINE(Physical, PhysicalInfo, PHYSICAL)
DEFINE(Flags, InterfaceFlags, FLAGS)
DEFINE(Type, TypeInfo, TYPE)
DEFINE(Block, BlockInfo, BLOCK)
DEFINE(Categories, IntfCategory, CATEGORIES)
DEFINE(Client, InformationClient, CLIENT)
DEFINE(Lag, LagMemberOperationProto, LAG)
static DEFINE_ENCODE(State, STATE)
// Those with a repeated field.

#define ENTRY(SCALAR, NESTED)           \
  NESTED(1, zorid, zorid)               \
  NESTED(2, parent, parent)             \
  NESTED(3, generalInfo, generalinfo)   \
  NESTED(4, statusInfo, statusinfo)     \
  NESTED(5, physicalInfo, physicalinfo) \
  NESTED(6, typeInfo, typeinfo)
#define LAST_OF_ENTRY(SCALAR, NESTED) SCALAR(9, intfCategory, intfcategory)

    std::string Encode(const oracle::Entry& m) {
  std::string out;
  ENTRY(ENCODE, ENCODE)
  for (const std::int32_t protocol : m.shutdownProtos) Put(out, 7, protocol);
  for (const oracle::Block& block : m.blockInfo) Put(out, 8, block);
  LAST_OF_ENTRY(ENCODE, ENCODE)
  return out;
}
void Fill(const oracle::Entry& m, pb::IntfEntry& p) {
  ENTRY(FILL, FILL_NESTED)
  for (const std::int32_t protocol : m.shutdownProtos) {
    p.add_shutdownprotos(static_cast<pb::ProtocolType>(protocol));
  }
  for (const oracle::Block& block : m.blockInfo) Fill(block, *p.add_blockinfo());
  LAST_OF_ENTRY(FILL, FILL_NESTED)
}
oracle::Entry Read(const pb::IntfEntry& p) {
  oracle::Entry m;
  ENTRY(READ, READ_NESTED)
  m.shutdownProtos.assign(p.shutdownprotos().begin(), p.shutdownprotos().end());
  for (const pb::BlockInfo& block : p.blockinfo()) m.blockInfo.push_back(Read(block));
  LAST_OF_ENTRY(READ, READ_NESTED)
  return m;
}

std::string Encode(const oracle::Signal& m) {
  std::string out;
  Field(out, 1, m.protocol);
  for (const oracle::State& state : m.intfs) Put(out, 2, Encode(state));
  return out;
}

#define DEFINE_SIGNAL(Message, Info, accessor)                                            \
  static void FillState(const oracle::State& m, pb::Info& p) { STATE(FILL, FILL_NESTED) } \
  static oracle::State ReadState(const pb::Info& p) {                                     \
    oracle::State m;                                                                      \
    STATE(READ, READ_NESTED)                                                              \
    return m;                                                                             \
  }                                                                                       \
  void Fill(const oracle::Signal& m, pb::Message& p) {                                    \
    FILL(1, protocol, accessor)                                                           \
    for (const oracle::State& state : m.intfs) FillState(state, *p.add_intfs());          \
  }                                                                                       \
  oracle::Signal Read(const pb::Message& p) {                                             \
    oracle::Signal m;                                                                     \
    READ(1, protocol, accessor)                                                           \
    for (const pb::Info& state : p.intfs()) m.intfs.push_back(ReadState(state));          \
    return m;                                                                             \
  }
DEFINE_SIGNAL(ShutStateSync, ShutStateInfo, shutprotocol)
DEFINE_SIGNAL(BlockStateSync, BlockStateInfo, blockprotocol)

}  // namespace proof
