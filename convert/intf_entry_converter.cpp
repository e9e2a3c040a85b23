#include "convert/intf_entry_converter.h"

#include <cstddef>
#include <list>
#include <string>

#include "convert/internal/enum_tables.h"
#include "convert/internal/intf_entry_mapping.h"
#include "convert/internal/nested_message.h"
#include "convert/internal/protocol_mapping.h"
#include "convert/internal/zorid_mapping.h"

namespace pb = zorl2::protobuf;

using zorl2_mapping::InterfaceCategoryTable;
using zorl2_mapping::ToMessage;
using zorl2_mapping::ToNative;

template class Converter<pb::IntfEntry, IntfEntry>;

namespace {

// The nodes that `list` needs in addition to hold `count` elements.
template <typename T>
std::list<T> MissingNodes(const std::list<T>& list, int count) {
  const auto wanted = static_cast<std::size_t>(count);
  return std::list<T>(wanted > list.size() ? wanted - list.size() : 0);
}

// Overwrites `list` with the elements of a repeated field. `missing` is what MissingNodes()
// returned, so nothing is allocated.
template <typename T, typename Repeated, typename Translate>
void Overwrite(std::list<T>& list, std::list<T>& missing, const Repeated& elements,
               Translate translate) {
  list.splice(list.end(), missing);
  auto at = list.begin();
  for (const auto& element : elements) *at++ = translate(element);
  list.erase(at, list.end());
}

}  // namespace

IntfEntryConverter::~IntfEntryConverter() = default;

bool IntfEntryConverter::Convert(const pb::IntfEntry& message, IntfEntry& entry) {
  // Covers every nested message, so none of them is tested again.
  if (!message.IsInitialized()) return false;

  // Prepare: everything that can fail happens before the first write to the record.
  IntfEntry::StatusInfo statusInfo;
  ToNative(message.statusinfo(), statusInfo);
  IntfEntry::PhysicalInfo physicalInfo;
  ToNative(message.physicalinfo(), physicalInfo);
  IntfEntry::TypeInfo typeInfo;
  ToNative(message.typeinfo(), typeInfo);
  const InterfaceCategory category = InterfaceCategoryTable::ToNative(message.intfcategory());

  const pb::GeneralInfo& general = message.generalinfo();
  entry.generalInfo.intf_name.reserve(general.intf_name().size());
  entry.generalInfo.phy_addr.reserve(general.phy_addr().size());
  entry.generalInfo.redundancy_group_phy_addr.reserve(general.redundancy_group_phy_addr().size());
  auto shutdownNodes = MissingNodes(entry.shutdownProtos, message.shutdownprotos_size());
  auto blockNodes = MissingNodes(entry.blockInfo, message.blockinfo_size());

  // Commit: nothing from here on can fail.
  // A malformed identifier becomes all zero and does not reject the entry.
  ToNative(message.zorid(), entry.id);
  entry.parent = zorid_t{};
  if (message.has_parent()) ToNative(message.parent(), entry.parent);
  entry.generalInfo.bridge_port_number = 0;  // The value if the message has none.
  ToNative(general, entry.generalInfo);
  entry.statusInfo = statusInfo;
  entry.physicalInfo = physicalInfo;
  entry.typeInfo = typeInfo;
  entry.interfaceCategory = category;
  Overwrite(entry.shutdownProtos, shutdownNodes, message.shutdownprotos(),
            [](int protocol) { return ToNative(static_cast<pb::ProtocolType>(protocol)); });
  Overwrite(entry.blockInfo, blockNodes, message.blockinfo(), [](const pb::BlockInfo& element) {
    IntfEntry::BlockInfo blockInfo;
    ToNative(element, blockInfo);
    return blockInfo;
  });
  return true;
}

bool IntfEntryConverter::Convert(const IntfEntry& entry, pb::IntfEntry& message) {
  message.Clear();
  ToMessage(entry.getId(), ZORL2_NESTED(message, zorid));
  // Always present, because the record cannot tell a missing parent from the all-zero identifier.
  ToMessage(entry.getParent(), ZORL2_NESTED(message, parent));
  ToMessage(entry.getGeneralInfo(), ZORL2_NESTED(message, generalinfo));
  ToMessage(entry.getStatusInfo(), ZORL2_NESTED(message, statusinfo));
  ToMessage(entry.getPhysicalInfo(), ZORL2_NESTED(message, physicalinfo));
  ToMessage(entry.getTypeInfo(), ZORL2_NESTED(message, typeinfo));

  for (const ProtocolType protocol : entry.getShutdownProtos()) {
    message.add_shutdownprotos(ToMessage(protocol));
  }
  message.mutable_blockinfo()->Reserve(static_cast<int>(entry.getBlockInfo().size()));
  for (const IntfEntry::BlockInfo& blockInfo : entry.getBlockInfo()) {
    ToMessage(blockInfo, *message.add_blockinfo());
  }

  message.set_intfcategory(InterfaceCategoryTable::ToMessage(entry.getInterfaceCategory()));
  return true;
}
