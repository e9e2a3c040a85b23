// The interface of every converter.
#pragma once

#include "native/export.h"

// Translates between a generated message and a native record, in both directions. Source first and
// const, destination last. A converter has no state: one object may serve any number of calls and
// any number of threads at once, as long as each message and each record is used by one thread at
// a time.
//
// A conversion hides no exception. std::bad_alloc can leave any of them; what else can, and what
// the destination holds then, stands at each converter.
template <typename Proto, typename Native>
class ZORL2_EXPORT Converter {
 public:
  virtual ~Converter() = default;

  // Message to native. False when the message lacks a required field, and the record is then
  // exactly as it was; each converter adds its own refusals.
  virtual bool Convert(const Proto& message, Native& native) = 0;

  // Native to message. Clears the message first: nothing that it held survives, whatever follows.
  virtual bool Convert(const Native& native, Proto& message) = 0;
};
