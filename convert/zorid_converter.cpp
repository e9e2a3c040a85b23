#include "convert/zorid_converter.h"

#include "convert/zorid_mapping.h"

template class Converter<zorl2::protobuf::Zorid, zorid_t>;

ZORIDConverter::~ZORIDConverter() = default;

bool ZORIDConverter::Convert(const zorl2::protobuf::Zorid& message, zorid_t& id) {
  // Nothing in a Zorid is required, so there is no initialisation to test: the call would cost as
  // much as the rest.
  return zorl2_mapping::ToNative(message, id);
}

bool ZORIDConverter::Convert(const zorid_t& id, zorl2::protobuf::Zorid& message) {
  message.Clear();
  return zorl2_mapping::ToMessage(id, message);
}
