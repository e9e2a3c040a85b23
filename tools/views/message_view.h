// Messages next to their native records.
#pragma once

#include <google/protobuf/message.h>

#include <string>

#include "tools/model/filter.h"
#include "tools/text/colours.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

// Prints a list or a single entry as a table, a state signal by interface, and everything else
// field by field; then why elements do not convert, what the conversion loses, and the unknown
// fields. The title names the input. Accepts a message without its required fields. The caller must
// have applied the filter to the message; printed indices are those before that.
void PrintMessage(const google::protobuf::Message& message, const std::string& title,
                  const Filter& filter, Output& out, const Palette& palette);

// Prints why elements do not convert, what the conversion loses, and the unknown fields.
void PrintNotKept(const google::protobuf::Message& message, const Filter& filter, Output& out,
                  const Palette& palette);

// Prints the native record, or those in the message, as indented lines, and why there is none.
void PrintNative(const google::protobuf::Message& message, Output& out);

}  // namespace zorl2_inspect
