/// \file
/// Converts member operations of link aggregations.
#pragma once

#include "convert/converter.h"
#include "lag.pb.h"
#include "native/export.h"
#include "native/lag_member_operation.h"

extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::LagMemberOperationProto, LagMemberOperation>;

/// Converts between LagMemberOperation and LagMemberOperationProto. Neither direction reads or
/// writes `managerData`.
class ZORL2_EXPORT LagMemberConverter final
    : public Converter<zorl2::protobuf::LagMemberOperationProto, LagMemberOperation> {
 public:
  ~LagMemberConverter() override;

  /// Converts a message to an operation.
  /// Returns: false if an identifier is absent or does not have exactly four values; the operation
  /// is then unchanged. Throws: nothing. Lossy: an absent token becomes 0, an absent flag false;
  /// each value of an identifier keeps its low 8 bits.
  bool Convert(const zorl2::protobuf::LagMemberOperationProto& message,
               LagMemberOperation& operation) override;

  /// Converts an operation to a message with all five fields.
  /// Returns: true.
  /// Throws: std::bad_alloc; the fields before the failing one are then set.
  bool Convert(const LagMemberOperation& operation,
               zorl2::protobuf::LagMemberOperationProto& message) override;
};
