// Identifiers, registrations and member operations.
#include <string>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/measure.h"
#include "convert/info_client_config_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"

namespace zorl2_bench {

namespace {

template <typename Converter, typename Message, typename Native>
void Register(const std::string& name, Native (*make)()) {
  const auto make_message = [make] {
    Message message;
    Converter().Convert(make(), message);
    return message;
  };
  MeasureWithThreads(name + "/to_message/reused/convert", [make] {
    return [converter = Converter(), native = make(), message = Message()]() mutable {
      converter.Convert(native, message);
      Keep(message);
    };
  });
  Measure(name + "/to_message/reused/copy", [make_message] {
    return [source = make_message(), message = Message()]() mutable {
      message.CopyFrom(source);
      Keep(message);
    };
  });
  MeasureWithThreads(name + "/to_native/used/convert", [make_message] {
    return [converter = Converter(), message = make_message(), native = Native()]() mutable {
      converter.Convert(message, native);
      Keep(native);
    };
  });
  Measure(name + "/to_native/used/assign", [make] {
    return [source = make(), native = Native()]() mutable {
      native = source;
      Keep(native);
    };
  });
}

}  // namespace

void RegisterSmallCases() {
  Register<ZORIDConverter, zorl2::protobuf::Zorid, zorid_t>("identifier",
                                                            [] { return Identifier(0x01020304); });
  Register<ZORL2InfoClientConfigConverter, zorl2::protobuf::InformationClient,
           ZORL2InfoClientConfig>("registration", [] { return Registration(1); });
  Register<LagMemberConverter, zorl2::protobuf::LagMemberOperationProto, LagMemberOperation>(
      "operation", [] { return Operation(1); });
}

}  // namespace zorl2_bench
