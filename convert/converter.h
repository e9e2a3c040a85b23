// The interface of every converter.
#pragma once

#include "native/export.h"

// Translates between a generated message and a native record, in both directions. Source first and
// const, destination last. A converter has no state: one object may serve any number of calls and
// any number of threads at once, as long as each message and each record is used by one thread at
// a time.
//
// A conversion hides no exception. std::bad_alloc can leave any conversion that allocates. Each
// converter documents the others, and what the destination holds after each.
template <typename Proto, typename Native>
class ZORL2_EXPORT Converter {
 public:
  virtual ~Converter() = default;

  // Message to native. Returns false if the message lacks a required field; the record then remains
  // unchanged. Each converter documents what else it rejects. Presence decides what is read, so the
  // content of an absent submessage does not matter.
  virtual bool Convert(const Proto& message, Native& native) = 0;

  // Native to message. Clears the message first, whatever follows.
  virtual bool Convert(const Native& native, Proto& message) = 0;
};
