#include "native/intf_entry.h"

const zorid_t& IntfEntry::getId() const { return id; }

const zorid_t& IntfEntry::getParent() const { return parent; }

const IntfEntry::GeneralInfo& IntfEntry::getGeneralInfo() const { return generalInfo; }

const IntfEntry::StatusInfo& IntfEntry::getStatusInfo() const { return statusInfo; }

const IntfEntry::PhysicalInfo& IntfEntry::getPhysicalInfo() const { return physicalInfo; }

const IntfEntry::TypeInfo& IntfEntry::getTypeInfo() const { return typeInfo; }

const std::list<ProtocolType>& IntfEntry::getShutdownProtos() const { return shutdownProtos; }

const std::list<IntfEntry::BlockInfo>& IntfEntry::getBlockInfo() const { return blockInfo; }

InterfaceCategory IntfEntry::getInterfaceCategory() const { return interfaceCategory; }
