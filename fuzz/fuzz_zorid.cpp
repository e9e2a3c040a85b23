#include "convert/zorid_converter.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return proof::FuzzConverter<ZORIDConverter, zorl2::protobuf::Zorid>(
      data, size, &proof::Generator::NativeZorid);
}
