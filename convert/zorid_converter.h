/// \file
/// Converts interface identifiers.
#pragma once

#include "convert/converter.h"
#include "native/export.h"
#include "native/zorid.h"
#include "zorid.pb.h"

extern template class ZORL2_EXPORT Converter<zorl2::protobuf::Zorid, zorid_t>;

/// Converts between zorid_t and Zorid, whose four values are the four octets in their order.
class ZORL2_EXPORT ZORIDConverter final : public Converter<zorl2::protobuf::Zorid, zorid_t> {
 public:
  ~ZORIDConverter() override;

  /// Converts a message to an identifier.
  /// Returns: false, and zeroes the identifier, if the message does not have exactly four values.
  /// Throws: nothing.
  /// Lossy: keeps the low 8 bits of each value.
  bool Convert(const zorl2::protobuf::Zorid& message, zorid_t& id) override;

  /// Converts an identifier to a message with exactly four values, each below 256.
  /// Returns: true.
  /// Throws: std::bad_alloc; the message is then cleared.
  bool Convert(const zorid_t& id, zorl2::protobuf::Zorid& message) override;
};
