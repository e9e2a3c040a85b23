#include "convert/enum_serialization.h"

#include "convert/internal/protocol_mapping.h"

namespace pb = zorl2::protobuf;

pb::ProtocolType SerializeProtocolType(ProtocolType native) noexcept {
  return zorl2_mapping::ToMessage(native);
}

ProtocolType DeserializeProtocolType(pb::ProtocolType message) noexcept {
  return zorl2_mapping::ToNative(message);
}

pb::BlockState SerializeBlockState(BlockState native) noexcept {
  return zorl2_mapping::ToMessage(native);
}

BlockState DeserializeBlockState(pb::BlockState message) noexcept {
  return zorl2_mapping::ToNative(message);
}
