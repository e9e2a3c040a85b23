#include "convert/lag_member_converter.h"

#include "convert/zorid_mapping.h"

namespace pb = zorl2::protobuf;

using zorl2_mapping::ToMessage;
using zorl2_mapping::ToNative;

template class Converter<pb::LagMemberOperationProto, LagMemberOperation>;

LagMemberConverter::~LagMemberConverter() = default;

bool LagMemberConverter::Convert(const pb::LagMemberOperationProto& message,
                                 LagMemberOperation& operation) {
  // Always true for a message without required fields; tested as in every converter.
  if (!message.IsInitialized()) return false;
  // An absent identifier reads as one without values, which is no more taken than any other count.
  // Through temporaries: a malformed identifier zeroes its destination, and a refused operation
  // must not touch the record.
  zorid_t lag;
  if (!ToNative(message.lag(), lag)) return false;
  zorid_t member;
  if (!ToNative(message.member(), member)) return false;

  operation.lag = lag;
  operation.member = member;
  // An absent scalar reads as zero, which is what it means.
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
  if (!ToMessage(operation.lag, lag)) return false;
  if (!ToMessage(operation.member, member)) return false;
  message.set_token(operation.token);
  message.set_collecting(operation.collecting);
  message.set_distributing(operation.distributing);
  return true;
}
