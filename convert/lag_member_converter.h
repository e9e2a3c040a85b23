// Operations on the members of an aggregation.
#pragma once

#include "convert/converter.h"
#include "lag.pb.h"
#include "native/export.h"
#include "native/lag_member_operation.h"

extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::LagMemberOperationProto, LagMemberOperation>;

// LagMemberOperation to and from LagMemberOperationProto. The manager's own 32 bits of the record
// are neither read nor written.
class ZORL2_EXPORT LagMemberConverter final
    : public Converter<zorl2::protobuf::LagMemberOperationProto, LagMemberOperation> {
 public:
  ~LagMemberConverter() override;

  // False when one of the two identifiers is absent or does not hold exactly four values; the whole
  // record is then as it was, both identifiers included. An absent token becomes 0, an absent flag
  // false. Never throws.
  bool Convert(const zorl2::protobuf::LagMemberOperationProto& message,
               LagMemberOperation& operation) override;

  // Always true. The message then has all five fields, zero and false included, so that an absent
  // field does not come back absent. Throws nothing but std::bad_alloc.
  bool Convert(const LagMemberOperation& operation,
               zorl2::protobuf::LagMemberOperationProto& message) override;
};
