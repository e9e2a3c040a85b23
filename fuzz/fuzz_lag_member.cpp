#include "convert/lag_member_converter.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return proof::FuzzConverter<LagMemberConverter, zorl2::protobuf::LagMemberOperationProto>(
      data, size, &proof::Generator::NativeLag);
}
