// Whole interface entries.
#pragma once

#include "convert/converter.h"
#include "interface_entry.pb.h"
#include "native/export.h"
#include "native/intf_entry.h"

extern template class ZORL2_EXPORT Converter<zorl2::protobuf::IntfEntry, IntfEntry>;

// IntfEntry the record to and from IntfEntry the message.
class ZORL2_EXPORT IntfEntryConverter final
    : public Converter<zorl2::protobuf::IntfEntry, IntfEntry> {
 public:
  ~IntfEntryConverter() override;

  // Returns false if the message or a message in it lacks a required field. Replaces the whole
  // record, in place: after false and after any exception the record remains unchanged.
  //
  // A record keeps the capacity of its strings and reuses its list nodes, as messages do: nothing is
  // allocated where a used record has room. After std::bad_alloc that capacity may have grown, which
  // invalidates pointers into the strings.
  //
  // Lenient on purpose: an identifier without exactly four values becomes all zero and the
  // conversion continues, an absent parent or bridge port number becomes zero, an unlisted protocol
  // becomes PROTOCOL_UNKNOWN, and a bridge port number keeps its low 16 bits.
  //
  // Throws boost::wrapexcept<std::out_of_range> ("bimap<>: invalid key") for an unlisted status,
  // speed, duplex mode, type or VLAN type, std::out_of_range ("map::at") for an unlisted category.
  bool Convert(const zorl2::protobuf::IntfEntry& message, IntfEntry& entry) override;

  // Always true. The message then has a parent and a bridge port number, because the record cannot
  // say that there is none; the MTU keeps its low 32 bits; an unknown protocol becomes
  // PROTOCOL_UNKNOWN and a block state other than 1 BLOCK_STATE_FORWARD.
  //
  // Throws as above. Every field set before the exception stays set, and the nested message that
  // the failing enumeration belongs to is present.
  bool Convert(const IntfEntry& entry, zorl2::protobuf::IntfEntry& message) override;
};
