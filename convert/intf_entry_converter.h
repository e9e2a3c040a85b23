/// \file
/// Converts whole interface entries.
#pragma once

#include "convert/converter.h"
#include "interface_entry.pb.h"
#include "native/export.h"
#include "native/intf_entry.h"

extern template class ZORL2_EXPORT Converter<zorl2::protobuf::IntfEntry, IntfEntry>;

/// Converts between the record IntfEntry and the message IntfEntry.
class ZORL2_EXPORT IntfEntryConverter final
    : public Converter<zorl2::protobuf::IntfEntry, IntfEntry> {
 public:
  ~IntfEntryConverter() override;

  /// Converts a message to a record, which it replaces as a whole and updates in place: the record
  /// keeps the capacity of its strings and its list nodes, and allocates only what it lacks.
  /// Returns: false if the message or a message in it lacks a required field. After false and after
  /// an exception the record is unchanged; after std::bad_alloc its strings may have more capacity.
  /// Throws: boost::wrapexcept<std::out_of_range> ("bimap<>: invalid key") for an unlisted status,
  /// speed, duplex mode, type or VLAN type; std::out_of_range ("map::at") for an unlisted category.
  /// Lossy: an identifier without exactly four values becomes all zero, an absent parent or bridge
  /// port number zero, an unlisted protocol PROTOCOL_UNKNOWN; a bridge port number keeps its low 16
  /// bits.
  bool Convert(const zorl2::protobuf::IntfEntry& message, IntfEntry& entry) override;

  /// Converts a record to a message that has all fields, a parent and a bridge port number
  /// included. Returns: true. Throws: as above. The fields before the failing one are set, and the
  /// nested message of the failing enumeration is present. Lossy: the MTU keeps its low 32 bits, an
  /// unlisted protocol becomes PROTOCOL_UNKNOWN, a block state other than 1 BLOCK_STATE_FORWARD.
  bool Convert(const IntfEntry& entry, zorl2::protobuf::IntfEntry& message) override;
};
