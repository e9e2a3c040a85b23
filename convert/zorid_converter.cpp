#include "convert/zorid_converter.h"

#include "convert/internal/zorid_mapping.h"

template class Converter<zorl2::protobuf::Zorid, zorid_t>;

ZORIDConverter::~ZORIDConverter() = default;

bool ZORIDConverter::Convert(const zorl2::protobuf::Zorid& message, zorid_t& id) {
  if (!message.IsInitialized()) return false;
  return zorl2_mapping::ToNative(message, id);
}

bool ZORIDConverter::Convert(const zorid_t& id, zorl2::protobuf::Zorid& message) {
  message.Clear();
  return zorl2_mapping::ToMessage(id, message);
}
