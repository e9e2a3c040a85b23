// The only writer of IntfEntry.
#pragma once

#include "native/export.h"
#include "native/intf_entry.h"

// Holds one entry under construction. Every operation takes effect at once and returns the builder
// itself, so that calls chain. Nothing is validated: any number, any enumeration value, empty
// strings and lists are accepted. The names are the manager's own: only the two list operations
// accumulate, every other add replaces.
//
// An operation throws nothing but std::bad_alloc. One thread at a time uses a builder; the entries
// that it hands out share nothing with it.
class ZORL2_EXPORT IntfEntryBuilder {
 public:
  // Starts from an empty entry, zero throughout.
  IntfEntryBuilder() = default;

  // Starts from an entry whose strings and list nodes are taken over without a copy. The argument
  // is left with empty strings and lists and keeps its identifiers, numbers and flags. Never
  // throws.
  // Implicit, so that a builder can be initialised from an entry with an equals sign.
  IntfEntryBuilder(IntfEntry&& start);  // NOLINT(google-explicit-constructor)

  // Replaces the interface's own identifier.
  IntfEntryBuilder& addZorId(const zorid_t& id);
  // Replaces the parent's identifier.
  IntfEntryBuilder& addParent(const zorid_t& parent);
  // Replaces all five members. When memory runs out, the strings assigned before stay assigned.
  IntfEntryBuilder& addGeneralInfo(const IntfEntry::GeneralInfo& generalInfo);
  // Replaces all seven members.
  IntfEntryBuilder& addStatusInfo(const IntfEntry::StatusInfo& statusInfo);
  // Replaces all three members.
  IntfEntryBuilder& addPhysicalInfo(const IntfEntry::PhysicalInfo& physicalInfo);
  // Replaces all three members, the flags included.
  IntfEntryBuilder& addTypeInfo(const IntfEntry::TypeInfo& typeInfo);
  // Appends one element, also when the list holds an equal one. Adds nothing when memory runs out.
  IntfEntryBuilder& addShutdownProto(ProtocolType protocol);
  // Appends a copy, also when the list names the protocol already. Adds nothing when memory runs
  // out.
  IntfEntryBuilder& addBlockInfo(const IntfEntry::BlockInfo& blockInfo);
  // Replaces the category.
  IntfEntryBuilder& setInterfaceCategory(InterfaceCategory category);

  // A copy of the entry as it stands, with strings and list nodes of its own. The builder keeps its
  // entry and may be used on, also after std::bad_alloc.
  IntfEntry Build();

 private:
  IntfEntry entry;
};
