#include "convert/intf_state_converter.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return proof::FuzzConverter<BlockStateConverter, zorl2::protobuf::BlockStateSync>(
      data, size, &proof::Generator::NativeBlockSignal, oracle::kBlockFaultLine);
}
