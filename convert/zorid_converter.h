// Interface identifiers.
#pragma once

#include "convert/converter.h"
#include "native/export.h"
#include "native/zorid.h"
#include "zorid.pb.h"

extern template class ZORL2_EXPORT Converter<zorl2::protobuf::Zorid, zorid_t>;

// zorid_t to and from Zorid, whose value list holds the four octets in their order.
class ZORL2_EXPORT ZORIDConverter final : public Converter<zorl2::protobuf::Zorid, zorid_t> {
 public:
  ~ZORIDConverter() override;

  // False unless the message holds exactly four values; the identifier is then all zero, not what
  // it was. Of each value the low 8 bits are taken, without a check. Never throws.
  bool Convert(const zorl2::protobuf::Zorid& message, zorid_t& id) override;

  // The message then holds exactly four values, each below 256. Always true. Throws nothing but
  // std::bad_alloc, which leaves the message cleared.
  bool Convert(const zorid_t& id, zorl2::protobuf::Zorid& message) override;
};
