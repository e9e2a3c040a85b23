/// \file
/// Builds interface entries.
#pragma once

#include "native/export.h"
#include "native/intf_entry.h"

/// Holds one entry and writes its members. Every operation takes effect at once and returns the
/// builder, so that calls chain. The builder validates nothing: it accepts any number, any
/// enumeration value, empty strings and empty lists. Only addShutdownProto and addBlockInfo
/// accumulate; every other operation replaces.
///
/// Throws: only std::bad_alloc.
/// Thread safety: one thread at a time; the entries that Build returns share nothing with the
/// builder.
class ZORL2_EXPORT IntfEntryBuilder {
 public:
  /// Starts with an empty entry, all of its numbers zero.
  IntfEntryBuilder() = default;

  /// Starts with the argument and moves its strings and list nodes into the builder. The argument
  /// keeps its identifiers, numbers and flags; its strings and lists are empty afterwards.
  /// Implicit, so that a builder can be initialised from an entry with an equals sign. Throws:
  /// nothing.
  IntfEntryBuilder(IntfEntry&& start);  // NOLINT(google-explicit-constructor)

  /// Replaces the interface's own identifier.
  IntfEntryBuilder& addZorId(const zorid_t& id);
  /// Replaces the parent's identifier.
  IntfEntryBuilder& addParent(const zorid_t& parent);
  /// Replaces all five members. After std::bad_alloc the strings before the failing one are
  /// replaced.
  IntfEntryBuilder& addGeneralInfo(const IntfEntry::GeneralInfo& generalInfo);
  /// Replaces all seven members.
  IntfEntryBuilder& addStatusInfo(const IntfEntry::StatusInfo& statusInfo);
  /// Replaces all three members.
  IntfEntryBuilder& addPhysicalInfo(const IntfEntry::PhysicalInfo& physicalInfo);
  /// Replaces all three members, the flags included.
  IntfEntryBuilder& addTypeInfo(const IntfEntry::TypeInfo& typeInfo);
  /// Appends the protocol, even if the list has it. After std::bad_alloc the list is unchanged.
  IntfEntryBuilder& addShutdownProto(ProtocolType protocol);
  /// Appends a copy, even if the list has the protocol. After std::bad_alloc the list is unchanged.
  IntfEntryBuilder& addBlockInfo(const IntfEntry::BlockInfo& blockInfo);
  /// Replaces the category.
  IntfEntryBuilder& setInterfaceCategory(InterfaceCategory category);

  /// Returns a copy of the entry, with strings and list nodes of its own. The builder keeps its
  /// entry and can be used again, also after std::bad_alloc.
  IntfEntry Build();

 private:
  IntfEntry entry;
};
