// The seven enumerations nested in the interface entry as the tests know them: how many members,
// which function translates them on each side.
#pragma once

#include <gmock/gmock.h>

#include <cstdint>

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"

namespace zorl2_test {

struct AdminStatusRow {
  using Message = zorl2::protobuf::AdminStatus;
  using Native = IntfEntry::AdminStatus;
  static constexpr std::int32_t kCount = 2;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertAdminStatus;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertAdminStatus;
};

struct OperationalStatusRow {
  using Message = zorl2::protobuf::OperationalStatus;
  using Native = IntfEntry::OperationalStatus;
  static constexpr std::int32_t kCount = 2;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertOperationalStatus;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertOperationalStatus;
};

struct LinkStatusRow {
  using Message = zorl2::protobuf::LinkStatus;
  using Native = IntfEntry::LinkStatus;
  static constexpr std::int32_t kCount = 2;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertLinkStatus;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertLinkStatus;
};

struct EthernetSpeedRow {
  using Message = zorl2::protobuf::EthernetSpeed;
  using Native = IntfEntry::EthernetSpeed;
  static constexpr std::int32_t kCount = 12;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertEthernetSpeed;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertEthernetSpeed;
};

struct DuplexModeRow {
  using Message = zorl2::protobuf::EthernetDuplexMode;
  using Native = IntfEntry::EthernetDuplexMode;
  static constexpr std::int32_t kCount = 3;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertDuplexMode;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertDuplexMode;
};

struct InterfaceTypeRow {
  using Message = zorl2::protobuf::InterfaceType;
  using Native = IntfEntry::InterfaceType;
  static constexpr std::int32_t kCount = 5;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertInterfaceType;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertInterfaceType;
};

struct VlanTypeRow {
  using Message = zorl2::protobuf::VlanType;
  using Native = IntfEntry::VlanType;
  static constexpr std::int32_t kCount = 5;
  static constexpr auto kToNative = &IntfEntryConvertHelperProtobuf::ConvertVlanType;
  static constexpr auto kToMessage = &IntfEntryConvertHelperZOR::ConvertVlanType;
};

using EnumRows = testing::Types<AdminStatusRow, OperationalStatusRow, LinkStatusRow,
                                EthernetSpeedRow, DuplexModeRow, InterfaceTypeRow, VlanTypeRow>;

}  // namespace zorl2_test
