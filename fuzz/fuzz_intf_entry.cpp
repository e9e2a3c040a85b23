#include "convert/intf_entry_converter.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return proof::FuzzConverter<IntfEntryConverter, zorl2::protobuf::IntfEntry>(
      data, size, &proof::Generator::NativeEntry);
}
