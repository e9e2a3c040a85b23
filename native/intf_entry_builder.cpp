#include "native/intf_entry_builder.h"

#include <utility>

IntfEntryBuilder::IntfEntryBuilder(IntfEntry&& start) : entry(std::move(start)) {}

IntfEntryBuilder& IntfEntryBuilder::addZorId(const zorid_t& id) {
  entry.id = id;
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addParent(const zorid_t& parent) {
  entry.parent = parent;
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addGeneralInfo(const IntfEntry::GeneralInfo& generalInfo) {
  entry.generalInfo = generalInfo;
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addStatusInfo(const IntfEntry::StatusInfo& statusInfo) {
  entry.statusInfo = statusInfo;
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addPhysicalInfo(const IntfEntry::PhysicalInfo& physicalInfo) {
  entry.physicalInfo = physicalInfo;
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addTypeInfo(const IntfEntry::TypeInfo& typeInfo) {
  entry.typeInfo = typeInfo;
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addShutdownProto(ProtocolType protocol) {
  entry.shutdownProtos.push_back(protocol);
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::addBlockInfo(const IntfEntry::BlockInfo& blockInfo) {
  entry.blockInfo.push_back(blockInfo);
  return *this;
}

IntfEntryBuilder& IntfEntryBuilder::setInterfaceCategory(InterfaceCategory category) {
  entry.interfaceCategory = category;
  return *this;
}

IntfEntry IntfEntryBuilder::Build() { return entry; }
