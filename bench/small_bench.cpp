// Identifiers, registrations and member operations.
#include <string>

#include "bench/cases.h"
#include "bench/fixtures.h"
#include "bench/floors.h"
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
    SetByHand(make(), message);
    return message;
  };
  MeasureWithThreads(name + "/to_message/reused/convert", [make] {
    return [converter = Converter(), native = make(), message = Message()]() mutable {
      converter.Convert(native, message);
      Keep(message);
    };
  });
  MeasureWithThreads(name + "/to_message/reused/setters", [make] {
    return [native = make(), message = Message()]() mutable {
      SetByHand(native, message);
      Keep(message);
    };
  });
  Measure(name + "/to_message/reused/copy", [make_message] {
    return [source = make_message(), message = Message()]() mutable {
      message.CopyFrom(source);
      Keep(message);
    };
  });
  MeasureWithThreads(name + "/to_native/reused/convert", [make_message] {
    return [converter = Converter(), message = make_message(), native = Native()]() mutable {
      converter.Convert(message, native);
      Keep(native);
    };
  });
  MeasureWithThreads(name + "/to_native/reused/getters", [make_message] {
    return [message = make_message(), native = Native()]() mutable {
      GetByHand(message, native);
      Keep(native);
    };
  });
  MeasureRuntime<Message>(name, make_message);
}

}  // namespace

void RegisterSmallCases() {
  Register<ZORIDConverter, pb::Zorid, zorid_t>("identifier", [] { return Identifier(0x01020304); });
  Register<ZORL2InfoClientConfigConverter, pb::InformationClient, ZORL2InfoClientConfig>(
      "registration", [] { return Registration(1); });
  Register<LagMemberConverter, pb::LagMemberOperationProto, LagMemberOperation>(
      "operation", [] { return Operation(1); });
}

}  // namespace zorl2_bench
