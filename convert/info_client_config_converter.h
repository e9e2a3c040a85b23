// Registrations of information clients.
#pragma once

#include "convert/converter.h"
#include "information_client.pb.h"
#include "native/export.h"
#include "native/info_client_config.h"

extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::InformationClient, ZORL2InfoClientConfig>;

// ZORL2InfoClientConfig to and from InformationClient. A number outside the protocols becomes
// PROTOCOL_UNKNOWN in both directions; L1_PROTO and L2_PROTO are protocols like any other here.
class ZORL2_EXPORT ZORL2InfoClientConfigConverter final
    : public Converter<zorl2::protobuf::InformationClient, ZORL2InfoClientConfig> {
 public:
  ~ZORL2InfoClientConfigConverter() override;

  // Returns false if a field or one of the five category flags is missing; the record then remains
  // unchanged.
  // Otherwise address, protocol and token are overwritten, and the categories whose flag is true
  // are added to the set: what it held stays. A caller that wants the set to mirror the message
  // passes an empty one. Throws nothing but std::bad_alloc, which leaves what was written before
  // it.
  bool Convert(const zorl2::protobuf::InformationClient& message,
               ZORL2InfoClientConfig& config) override;

  // Always true. The message then has all its fields and all five flags; an element of the set that
  // is no category is left out. Throws nothing but std::bad_alloc.
  bool Convert(const ZORL2InfoClientConfig& config,
               zorl2::protobuf::InformationClient& message) override;
};
