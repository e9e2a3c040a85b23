// In the place of the library's own header of this name: an identifier conversion that fails when
// the test wants it, so that each fault site of the state converters is reached. Not defined here:
// what calls it then has the branches that it has in the library.
#pragma once

#include "convert/nested_message.h"
#include "native/zorid.h"
#include "zorid.pb.h"

namespace zorl2_mapping {

bool ToNative(const zorl2::protobuf::Zorid& message, zorid_t& id);

bool ToMessage(const zorid_t& id, zorl2::protobuf::Zorid& message);

}  // namespace zorl2_mapping
