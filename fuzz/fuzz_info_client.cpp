#include "convert/info_client_config_converter.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return proof::FuzzConverter<ZORL2InfoClientConfigConverter, zorl2::protobuf::InformationClient>(
      data, size, &proof::Generator::NativeClient);
}
