// Replaces the library's own header of this name with an identifier conversion that fails, so
// that each fault site of the state converters is reached.
#pragma once

#include "native/zorid.h"
#include "zorid.pb.h"

namespace zorl2_mapping {

bool ToNative(const zorl2::protobuf::Zorid& message, zorid_t& id);

bool ToMessage(const zorid_t& id, zorl2::protobuf::Zorid& message);

}  // namespace zorl2_mapping
