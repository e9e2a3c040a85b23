#include "convert/intf_entry_convert_helper_zor.h"

#include "convert/internal/enum_tables.h"
#include "convert/internal/intf_entry_mapping.h"

namespace pb = zorl2::protobuf;

void IntfEntryConvertHelperZOR::ConvertGeneralInfo(const IntfEntry::GeneralInfo& native,
                                                   pb::GeneralInfo& message) {
  zorl2_mapping::ToMessage(native, message);
}

void IntfEntryConvertHelperZOR::ConvertInterfaceFlags(const IntfEntry::InterfaceFlags& native,
                                                      pb::InterfaceFlags& message) {
  zorl2_mapping::ToMessage(native, message);
}

void IntfEntryConvertHelperZOR::ConvertBlockInfo(const IntfEntry::BlockInfo& native,
                                                 pb::BlockInfo& message) {
  zorl2_mapping::ToMessage(native, message);
}

void IntfEntryConvertHelperZOR::ConvertStatusInfo(const IntfEntry::StatusInfo& native,
                                                  pb::StatusInfo& message) {
  zorl2_mapping::ToMessage(native, message);
}

void IntfEntryConvertHelperZOR::ConvertPhysicalInfo(const IntfEntry::PhysicalInfo& native,
                                                    pb::PhysicalInfo& message) {
  zorl2_mapping::ToMessage(native, message);
}

void IntfEntryConvertHelperZOR::ConvertTypeInfo(const IntfEntry::TypeInfo& native,
                                                pb::TypeInfo& message) {
  zorl2_mapping::ToMessage(native, message);
}

void IntfEntryConvertHelperZOR::ConvertAdminStatus(const IntfEntry::AdminStatus& native,
                                                   pb::AdminStatus& message) {
  message = zorl2_mapping::AdminStatusTable::ToMessage(native);
}

void IntfEntryConvertHelperZOR::ConvertOperationalStatus(const IntfEntry::OperationalStatus& native,
                                                         pb::OperationalStatus& message) {
  message = zorl2_mapping::OperationalStatusTable::ToMessage(native);
}

void IntfEntryConvertHelperZOR::ConvertLinkStatus(const IntfEntry::LinkStatus& native,
                                                  pb::LinkStatus& message) {
  message = zorl2_mapping::LinkStatusTable::ToMessage(native);
}

void IntfEntryConvertHelperZOR::ConvertEthernetSpeed(const IntfEntry::EthernetSpeed& native,
                                                     pb::EthernetSpeed& message) {
  message = zorl2_mapping::EthernetSpeedTable::ToMessage(native);
}

void IntfEntryConvertHelperZOR::ConvertDuplexMode(const IntfEntry::EthernetDuplexMode& native,
                                                  pb::EthernetDuplexMode& message) {
  message = zorl2_mapping::DuplexModeTable::ToMessage(native);
}

void IntfEntryConvertHelperZOR::ConvertInterfaceType(const IntfEntry::InterfaceType& native,
                                                     pb::InterfaceType& message) {
  message = zorl2_mapping::InterfaceTypeTable::ToMessage(native);
}

void IntfEntryConvertHelperZOR::ConvertVlanType(const IntfEntry::VlanType& native,
                                                pb::VlanType& message) {
  message = zorl2_mapping::VlanTypeTable::ToMessage(native);
}
