#include "convert/lag_member_converter.h"

#include "convert/internal/nested_message.h"
#include "convert/internal/zorid_mapping.h"

namespace pb = zorl2::protobuf;

using zorl2_mapping::ToMessage;
using zorl2_mapping::ToNative;

template class Converter<pb::LagMemberOperationProto, LagMemberOperation>;

LagMemberConverter::~LagMemberConverter() = default;

bool LagMemberConverter::Convert(const pb::LagMemberOperationProto& message,
                                 LagMemberOperation& operation) {
  if (!message.IsInitialized()) return false;
  if (!message.has_lag() || !message.has_member()) return false;
  // A malformed identifier zeroes its destination, so both are converted before the record changes.
  zorid_t lag;
  zorid_t member;
  if (!ToNative(message.lag(), lag) || !ToNative(message.member(), member)) return false;

  operation.lag = lag;
  operation.member = member;
  // An absent scalar reads as zero.
  operation.token = message.token();
  operation.collecting = message.collecting();
  operation.distributing = message.distributing();
  return true;
}

bool LagMemberConverter::Convert(const LagMemberOperation& operation,
                                 pb::LagMemberOperationProto& message) {
  message.Clear();
  pb::Zorid& lag = ZORL2_NESTED(message, lag);
  pb::Zorid& member = ZORL2_NESTED(message, member);
  if (!ToMessage(operation.lag, lag) || !ToMessage(operation.member, member)) return false;
  message.set_token(operation.token);
  message.set_collecting(operation.collecting);
  message.set_distributing(operation.distributing);
  return true;
}
