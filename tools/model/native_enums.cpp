#include "tools/model/native_enums.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "convert/enum_serialization.h"
#include "convert/intf_entry_convert_helper_protobuf.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;

using Helper = IntfEntryConvertHelperProtobuf;

template <typename Message, typename Native, bool (Helper::*kConvert)(const Message&, Native&)>
int ThroughHelper(int number) {
  Helper helper;
  Native native{};
  (helper.*kConvert)(static_cast<Message>(number), native);
  return native;
}

int Protocol(int number) { return DeserializeProtocolType(static_cast<pb::ProtocolType>(number)); }

int Block(int number) { return DeserializeBlockState(static_cast<pb::BlockState>(number)); }

int Category(int number) {
  constexpr InterfaceCategory kNative[] = {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF};
  static_assert(pb::L1 == 0 && pb::L2 == 1 && pb::VP == 2 && pb::L2_SUB_IF == 3 &&
                pb::VIRTUAL_IF == 4 && std::size(kNative) == pb::InterfaceCategory_ARRAYSIZE);
  return kNative[number];
}

struct NativeEnum {
  std::string_view message;
  const char* native;
  int (*number)(int);
};

constexpr NativeEnum kEnums[] = {
    {"ProtocolType", "ProtocolType", Protocol},
    {"BlockState", "BlockState", Block},
    {"InterfaceCategory", "InterfaceCategory", Category},
    {"VlanType", "IntfEntry::VlanType",
     ThroughHelper<pb::VlanType, IntfEntry::VlanType, &Helper::ConvertVlanType>},
    {"InterfaceType", "IntfEntry::InterfaceType",
     ThroughHelper<pb::InterfaceType, IntfEntry::InterfaceType, &Helper::ConvertInterfaceType>},
    {"AdminStatus", "IntfEntry::AdminStatus",
     ThroughHelper<pb::AdminStatus, IntfEntry::AdminStatus, &Helper::ConvertAdminStatus>},
    {"OperationalStatus", "IntfEntry::OperationalStatus",
     ThroughHelper<pb::OperationalStatus, IntfEntry::OperationalStatus,
                   &Helper::ConvertOperationalStatus>},
    {"LinkStatus", "IntfEntry::LinkStatus",
     ThroughHelper<pb::LinkStatus, IntfEntry::LinkStatus, &Helper::ConvertLinkStatus>},
    {"EthernetSpeed", "IntfEntry::EthernetSpeed",
     ThroughHelper<pb::EthernetSpeed, IntfEntry::EthernetSpeed, &Helper::ConvertEthernetSpeed>},
    {"EthernetDuplexMode", "IntfEntry::EthernetDuplexMode",
     ThroughHelper<pb::EthernetDuplexMode, IntfEntry::EthernetDuplexMode,
                   &Helper::ConvertDuplexMode>},
};

const NativeEnum* Find(std::string_view message) {
  const auto* row = std::find_if(std::begin(kEnums), std::end(kEnums),
                                 [&](const NativeEnum& one) { return one.message == message; });
  return row == std::end(kEnums) ? nullptr : row;
}

}  // namespace

std::optional<int> NativeNumber(const google::protobuf::EnumValueDescriptor& value) {
  const NativeEnum* row = Find(value.type()->name());
  if (row == nullptr) return std::nullopt;
  return row->number(value.number());
}

const char* NativeEnumName(const google::protobuf::EnumDescriptor& type) {
  const NativeEnum* row = Find(type.name());
  return row == nullptr ? "" : row->native;
}

}  // namespace zorl2_inspect
