/// \file
/// Converts registrations of information clients.
#pragma once

#include "convert/converter.h"
#include "information_client.pb.h"
#include "native/export.h"
#include "native/info_client_config.h"

extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::InformationClient, ZORL2InfoClientConfig>;

/// Converts between ZORL2InfoClientConfig and InformationClient.
class ZORL2_EXPORT ZORL2InfoClientConfigConverter final
    : public Converter<zorl2::protobuf::InformationClient, ZORL2InfoClientConfig> {
 public:
  ~ZORL2InfoClientConfigConverter() override;

  /// Converts a message to a registration. Overwrites address, protocol and token, and adds the
  /// categories whose flag is true: the set keeps what it held. A caller that wants the set to
  /// mirror the message passes an empty one. Returns: false if a field or one of the five category
  /// flags is missing; the registration is then unchanged. Throws: std::bad_alloc; the members
  /// before the failing one are then written. Lossy: an unlisted protocol becomes PROTOCOL_UNKNOWN.
  bool Convert(const zorl2::protobuf::InformationClient& message,
               ZORL2InfoClientConfig& config) override;

  /// Converts a registration to a message with all fields and all five flags.
  /// Returns: true.
  /// Throws: std::bad_alloc; the fields before the failing one are then set.
  /// Lossy: an unlisted protocol becomes PROTOCOL_UNKNOWN; an element of the set that is no
  /// category is omitted.
  bool Convert(const ZORL2InfoClientConfig& config,
               zorl2::protobuf::InformationClient& message) override;
};
