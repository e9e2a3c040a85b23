// What a converter does with a native record.
#include "check/check.h"
#include "check/internal/rules.h"
#include "convert/enum_serialization.h"

namespace zorl2::check {
namespace {

namespace pb = zorl2::protobuf;

Verdict CheckProtocol(const char* field, ProtocolType native) {
  const pb::ProtocolType protocol = SerializeProtocolType(native);
  const bool is_listed = DeserializeProtocolType(protocol) == native;
  return internal::CheckSignalProtocol(field, native, is_listed, protocol);
}

}  // namespace

Verdict Check(const zorid_t&) { return {}; }

Verdict Check(const IntfEntry& record) { return internal::CheckEnumerations(record); }

Verdict Check(const ShutStateInfoSyncSignal& record) {
  return CheckProtocol("shutProtocol", record.protocol);
}

Verdict Check(const BlockStateInfoSyncSignal& record) {
  return CheckProtocol("blockProtocol", record.protocol);
}

Verdict Check(const ZORL2InfoClientConfig&) { return {}; }

Verdict Check(const LagMemberOperation&) { return {}; }

}  // namespace zorl2::check
