// Callers take the address of these functions, so their types are part of the interface: a member
// function that becomes static, const or virtual breaks such a caller.
#include <type_traits>

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "native/intf_entry.h"
#include "native/intf_entry_builder.h"

namespace pb = zorl2::protobuf;

namespace {

using FromMessages = IntfEntryConvertHelperProtobuf;
using FromRecords = IntfEntryConvertHelperZOR;

template <typename Message, typename Native>
constexpr bool ArePinned(bool (FromMessages::*)(const Message&, Native&),
                         void (FromRecords::*)(const Native&, Message&)) {
  return true;
}

static_assert(ArePinned<pb::GeneralInfo, IntfEntry::GeneralInfo>(&FromMessages::ConvertGeneralInfo,
                                                                 &FromRecords::ConvertGeneralInfo));
static_assert(ArePinned<pb::PhysicalInfo, IntfEntry::PhysicalInfo>(
    &FromMessages::ConvertPhysicalInfo, &FromRecords::ConvertPhysicalInfo));
static_assert(ArePinned<pb::StatusInfo, IntfEntry::StatusInfo>(&FromMessages::ConvertStatusInfo,
                                                               &FromRecords::ConvertStatusInfo));
static_assert(ArePinned<pb::InterfaceFlags, IntfEntry::InterfaceFlags>(
    &FromMessages::ConvertInterfaceFlags, &FromRecords::ConvertInterfaceFlags));
static_assert(ArePinned<pb::TypeInfo, IntfEntry::TypeInfo>(&FromMessages::ConvertTypeInfo,
                                                           &FromRecords::ConvertTypeInfo));
static_assert(ArePinned<pb::BlockInfo, IntfEntry::BlockInfo>(&FromMessages::ConvertBlockInfo,
                                                             &FromRecords::ConvertBlockInfo));
static_assert(ArePinned<pb::AdminStatus, IntfEntry::AdminStatus>(&FromMessages::ConvertAdminStatus,
                                                                 &FromRecords::ConvertAdminStatus));
static_assert(ArePinned<pb::OperationalStatus, IntfEntry::OperationalStatus>(
    &FromMessages::ConvertOperationalStatus, &FromRecords::ConvertOperationalStatus));
static_assert(ArePinned<pb::LinkStatus, IntfEntry::LinkStatus>(&FromMessages::ConvertLinkStatus,
                                                               &FromRecords::ConvertLinkStatus));
static_assert(ArePinned<pb::EthernetSpeed, IntfEntry::EthernetSpeed>(
    &FromMessages::ConvertEthernetSpeed, &FromRecords::ConvertEthernetSpeed));
static_assert(ArePinned<pb::EthernetDuplexMode, IntfEntry::EthernetDuplexMode>(
    &FromMessages::ConvertDuplexMode, &FromRecords::ConvertDuplexMode));
static_assert(ArePinned<pb::InterfaceType, IntfEntry::InterfaceType>(
    &FromMessages::ConvertInterfaceType, &FromRecords::ConvertInterfaceType));
static_assert(ArePinned<pb::VlanType, IntfEntry::VlanType>(&FromMessages::ConvertVlanType,
                                                           &FromRecords::ConvertVlanType));

static_assert(std::is_same_v<decltype(&IntfEntry::getInterfaceCategory),
                             InterfaceCategory (IntfEntry::*)() const>,
              "the category is returned by value");
static_assert(
    std::is_same_v<decltype(&IntfEntryBuilder::addGeneralInfo),
                   IntfEntryBuilder& (IntfEntryBuilder::*)(const IntfEntry::GeneralInfo&)>,
    "one overload only, so that its address can be taken");

}  // namespace
