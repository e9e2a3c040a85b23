#include "convert/intf_entry_convert_helper_protobuf.h"

#include "convert/internal/enum_tables.h"
#include "convert/internal/intf_entry_mapping.h"

namespace pb = zorl2::protobuf;

namespace {

template <typename Message, typename Native>
bool ConvertInitialized(const Message& message, Native& native) {
  if (!message.IsInitialized()) return false;
  zorl2_mapping::ToNative(message, native);
  return true;
}

}  // namespace

bool IntfEntryConvertHelperProtobuf::ConvertGeneralInfo(const pb::GeneralInfo& message,
                                                        IntfEntry::GeneralInfo& native) {
  return ConvertInitialized(message, native);
}

bool IntfEntryConvertHelperProtobuf::ConvertPhysicalInfo(const pb::PhysicalInfo& message,
                                                         IntfEntry::PhysicalInfo& native) {
  return ConvertInitialized(message, native);
}

bool IntfEntryConvertHelperProtobuf::ConvertStatusInfo(const pb::StatusInfo& message,
                                                       IntfEntry::StatusInfo& native) {
  return ConvertInitialized(message, native);
}

bool IntfEntryConvertHelperProtobuf::ConvertInterfaceFlags(const pb::InterfaceFlags& message,
                                                           IntfEntry::InterfaceFlags& native) {
  return ConvertInitialized(message, native);
}

bool IntfEntryConvertHelperProtobuf::ConvertTypeInfo(const pb::TypeInfo& message,
                                                     IntfEntry::TypeInfo& native) {
  return ConvertInitialized(message, native);
}

bool IntfEntryConvertHelperProtobuf::ConvertBlockInfo(const pb::BlockInfo& message,
                                                      IntfEntry::BlockInfo& native) {
  return ConvertInitialized(message, native);
}

bool IntfEntryConvertHelperProtobuf::ConvertAdminStatus(const pb::AdminStatus& message,
                                                        IntfEntry::AdminStatus& native) {
  native = zorl2_mapping::AdminStatusTable::ToNative(message);
  return true;
}

bool IntfEntryConvertHelperProtobuf::ConvertOperationalStatus(
    const pb::OperationalStatus& message, IntfEntry::OperationalStatus& native) {
  native = zorl2_mapping::OperationalStatusTable::ToNative(message);
  return true;
}

bool IntfEntryConvertHelperProtobuf::ConvertLinkStatus(const pb::LinkStatus& message,
                                                       IntfEntry::LinkStatus& native) {
  native = zorl2_mapping::LinkStatusTable::ToNative(message);
  return true;
}

bool IntfEntryConvertHelperProtobuf::ConvertEthernetSpeed(const pb::EthernetSpeed& message,
                                                          IntfEntry::EthernetSpeed& native) {
  native = zorl2_mapping::EthernetSpeedTable::ToNative(message);
  return true;
}

bool IntfEntryConvertHelperProtobuf::ConvertDuplexMode(const pb::EthernetDuplexMode& message,
                                                       IntfEntry::EthernetDuplexMode& native) {
  native = zorl2_mapping::DuplexModeTable::ToNative(message);
  return true;
}

bool IntfEntryConvertHelperProtobuf::ConvertInterfaceType(const pb::InterfaceType& message,
                                                          IntfEntry::InterfaceType& native) {
  native = zorl2_mapping::InterfaceTypeTable::ToNative(message);
  return true;
}

bool IntfEntryConvertHelperProtobuf::ConvertVlanType(const pb::VlanType& message,
                                                     IntfEntry::VlanType& native) {
  native = zorl2_mapping::VlanTypeTable::ToNative(message);
  return true;
}
