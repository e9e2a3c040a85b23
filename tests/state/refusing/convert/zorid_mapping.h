// In the place of the library's own header of this name: an identifier conversion that always
// fails, so that each fault site of the state converters is reached.
#pragma once

#include "convert/nested_message.h"
#include "native/zorid.h"
#include "zorid.pb.h"

namespace zorl2_mapping {

inline bool ToNative(const zorl2::protobuf::Zorid&, zorid_t&) { return false; }

inline bool ToMessage(const zorid_t&, zorl2::protobuf::Zorid&) { return false; }

}  // namespace zorl2_mapping
