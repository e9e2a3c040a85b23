// The state signals: what one protocol shuts down or blocks.
#pragma once

#include "convert/converter.h"
#include "intf_state.pb.h"
#include "native/export.h"
#include "native/intf_state_signals.h"

extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::ShutStateSync, ShutStateInfoSyncSignal>;
extern template class ZORL2_EXPORT
    Converter<zorl2::protobuf::BlockStateSync, BlockStateInfoSyncSignal>;

// Both converters follow one pattern.
//
// Message to native: false when the protocol or an element's identifier or state is missing, and
// the signal is then as it was. Otherwise the message is merged into the signal's map: interfaces
// that the message does not name keep their states, and of two elements for one interface the
// later one wins.
//
// Native to message: always true. One element per interface, in ascending order of identifiers.
//
// Both directions throw std::out_of_range ("map::at") for L1_PROTO, L2_PROTO and every number
// outside the protocols. The protocol is looked up first: the signal is then as it was, the
// message cleared.
//
// std::bad_alloc leaves the protocol and the elements before it merged, or set.
//
// An identifier without exactly four values ENDS THE PROCESS: pvex_print_backtrace(),
// pvex_gen_fault(1, "Convert", "convert/intf_state_converter.cpp", line, ""), exit(1). A caller
// that must survive a malformed identifier calls zorl2::check::Check() first.
class ZORL2_EXPORT ShutStateConverter final
    : public Converter<zorl2::protobuf::ShutStateSync, ShutStateInfoSyncSignal> {
 public:
  ~ShutStateConverter() override;
  bool Convert(const zorl2::protobuf::ShutStateSync& message,
               ShutStateInfoSyncSignal& signal) override;
  bool Convert(const ShutStateInfoSyncSignal& signal,
               zorl2::protobuf::ShutStateSync& message) override;
};

// A block state other than 1 is BLOCK_STATE_FORWARD on the other side, in both directions.
class ZORL2_EXPORT BlockStateConverter final
    : public Converter<zorl2::protobuf::BlockStateSync, BlockStateInfoSyncSignal> {
 public:
  ~BlockStateConverter() override;
  bool Convert(const zorl2::protobuf::BlockStateSync& message,
               BlockStateInfoSyncSignal& signal) override;
  bool Convert(const BlockStateInfoSyncSignal& signal,
               zorl2::protobuf::BlockStateSync& message) override;
};
