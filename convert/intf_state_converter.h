/// \file
/// Converts state signals: what one protocol shuts down or blocks.
#pragma once

#include "convert/converter.h"
#include "intf_state.pb.h"
#include "native/export.h"
#include "native/intf_state_signals.h"

extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::ShutStateSync, ShutStateInfoSyncSignal>;
extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::BlockStateSync, BlockStateInfoSyncSignal>;

/// Converts between ShutStateInfoSyncSignal and ShutStateSync.
///
/// An identifier without exactly four values TERMINATES THE PROCESS: pvex_print_backtrace(),
/// pvex_gen_fault(1, "Convert", "convert/intf_state_converter.cpp", site, ""), exit(1).
/// zorl2::check reports such a message without converting it.
class ZORL2_EXPORT ShutStateConverter final
    : public Converter<zorl2::protobuf::ShutStateSync, ShutStateInfoSyncSignal> {
 public:
  ~ShutStateConverter() override;

  /// Merges a message into a signal: interfaces that the message does not name keep their states,
  /// and the last of several elements for one interface wins. Returns: false if the protocol, or an
  /// element's identifier or state, is missing; the signal is then unchanged. Throws:
  /// std::out_of_range ("map::at") for L1_PROTO, L2_PROTO and every unlisted protocol; the signal
  /// is then unchanged. std::bad_alloc; the protocol and the earlier elements are then merged.
  bool Convert(const zorl2::protobuf::ShutStateSync& message,
               ShutStateInfoSyncSignal& signal) override;

  /// Converts a signal to a message with one element per interface, in ascending order.
  /// Returns: true.
  /// Throws: std::out_of_range ("map::at") for L1_PROTO, L2_PROTO and every unlisted protocol; the
  /// message is then cleared. std::bad_alloc; the protocol and the earlier elements are then set.
  bool Convert(const ShutStateInfoSyncSignal& signal,
               zorl2::protobuf::ShutStateSync& message) override;
};

/// Converts between BlockStateInfoSyncSignal and BlockStateSync. Like ShutStateConverter in all but
/// the states: a block state other than 1 becomes BLOCK_STATE_FORWARD, in both directions.
class ZORL2_EXPORT BlockStateConverter final
    : public Converter<zorl2::protobuf::BlockStateSync, BlockStateInfoSyncSignal> {
 public:
  ~BlockStateConverter() override;

  /// Merges a message into a signal, as ShutStateConverter does.
  bool Convert(const zorl2::protobuf::BlockStateSync& message,
               BlockStateInfoSyncSignal& signal) override;

  /// Converts a signal to a message, as ShutStateConverter does.
  bool Convert(const BlockStateInfoSyncSignal& signal,
               zorl2::protobuf::BlockStateSync& message) override;
};
