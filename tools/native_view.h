// Native records as a person reads them.
#pragma once

#include <google/protobuf/message.h>

#include <string>
#include <vector>

#include "native/intf_entry.h"
#include "native/zorid.h"
#include "tools/field_text.h"

namespace zorl2_inspect {

std::string DottedText(const zorid_t& id);

// The native name of a protocol; its number when it has none.
std::string NativeProtocolName(int native);

// A rate in kbit/s as "10 Gb/s"; "-" for 0.
std::string RateText(std::uint32_t kbps);

// What the converter makes of the message: the fields of the record under the paths that they have
// in the message, so that both can stand side by side. A state signal's are the states by
// interface. The message has a converter that does not refuse it.
std::vector<PathValue> NativeFields(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
