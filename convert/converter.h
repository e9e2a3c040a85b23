/// \file
/// The interface of every converter.
#pragma once

#include "native/export.h"

/// Translates between a generated message and a native record, in both directions.
///
/// Throws: std::bad_alloc, and what each converter documents. A conversion catches nothing.
/// Thread safety: a converter has no state, so any number of threads may share one, as long as one
/// thread at a time uses each message and each record.
template <typename Proto, typename Native>
class ZORL2_EXPORT Converter {
 public:
  virtual ~Converter() = default;

  /// Converts a message to a native record.
  /// Returns: false if the message lacks a required field; the record is then unchanged. Each
  /// converter documents what else it rejects. Presence decides: an absent submessage is not read,
  /// even if a caller filled it.
  virtual bool Convert(const Proto& message, Native& native) = 0;

  /// Converts a native record to a message. Clears the message first, also before an exception.
  /// Returns: true.
  virtual bool Convert(const Native& native, Proto& message) = 0;
};
