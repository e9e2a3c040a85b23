#include "convert/intf_entry_converter.h"

#include "convert/enum_mapping.h"
#include "convert/intf_entry_enum_tables.h"
#include "convert/intf_entry_mapping.h"
#include "convert/zorid_mapping.h"
#include "native/intf_entry_builder.h"

namespace pb = zorl2::protobuf;

using zorl2_mapping::InterfaceCategoryTable;
using zorl2_mapping::ToMessage;
using zorl2_mapping::ToNative;

template class Converter<pb::IntfEntry, IntfEntry>;

IntfEntryConverter::~IntfEntryConverter() = default;

bool IntfEntryConverter::Convert(const pb::IntfEntry& message, IntfEntry& entry) {
  // Covers every nested message, so the parts below need no test of their own.
  if (!message.IsInitialized()) return false;
  IntfEntryBuilder builder;

  // A malformed identifier becomes all zero and the entry goes on: one bad identifier must not
  // cost the receiver everything else that the entry says. An absent parent reads as one without
  // values and becomes all zero too.
  zorid_t id;
  ToNative(message.zorid(), id);
  builder.addZorId(id);
  zorid_t parent;
  ToNative(message.parent(), parent);
  builder.addParent(parent);

  ToNative(message.generalinfo(), builder.generalInfo());
  ToNative(message.statusinfo(), builder.statusInfo());
  ToNative(message.physicalinfo(), builder.physicalInfo());
  ToNative(message.typeinfo(), builder.typeInfo());

  for (int i = 0; i < message.shutdownprotos_size(); ++i) {
    builder.addShutdownProto(ToNative(message.shutdownprotos(i)));
  }
  for (const pb::BlockInfo& element : message.blockinfo()) {
    IntfEntry::BlockInfo blockInfo;
    ToNative(element, blockInfo);
    builder.addBlockInfo(blockInfo);
  }

  builder.setInterfaceCategory(InterfaceCategoryTable::ToNative(message.intfcategory()));

  entry = builder.Release();
  return true;
}

bool IntfEntryConverter::Convert(const IntfEntry& entry, pb::IntfEntry& message) {
  message.Clear();
  ToMessage(entry.getId(), ZORL2_NESTED(message, zorid));
  // Always present: the record cannot tell a missing parent from the all-zero identifier.
  ToMessage(entry.getParent(), ZORL2_NESTED(message, parent));
  ToMessage(entry.getGeneralInfo(), ZORL2_NESTED(message, generalinfo));
  ToMessage(entry.getStatusInfo(), ZORL2_NESTED(message, statusinfo));
  ToMessage(entry.getPhysicalInfo(), ZORL2_NESTED(message, physicalinfo));
  ToMessage(entry.getTypeInfo(), ZORL2_NESTED(message, typeinfo));

  for (const ProtocolType protocol : entry.getShutdownProtos()) {
    message.add_shutdownprotos(ToMessage(protocol));
  }
  auto& blockInfos = *message.mutable_blockinfo();
  const int blocks = static_cast<int>(entry.getBlockInfo().size());
  if (blockInfos.Capacity() < blocks) blockInfos.Reserve(blocks);
  for (const IntfEntry::BlockInfo& blockInfo : entry.getBlockInfo()) {
    ToMessage(blockInfo, *blockInfos.Add());
  }

  message.set_intfcategory(InterfaceCategoryTable::ToMessage(entry.getInterfaceCategory()));
  return true;
}
