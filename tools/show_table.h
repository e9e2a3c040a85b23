// The views of "show" for a person.
#pragma once

#include <google/protobuf/message.h>

#include <cstdio>
#include <string>

#include "interface_entry.pb.h"
#include "tools/colours.h"
#include "tools/table.h"

namespace zorl2_inspect {

// One line for each interface, taken from the native record.
Table EntryTable();
void AddEntry(const zorl2::protobuf::IntfEntry& entry, Table& table);

// A list or a single entry as such a table, with what stands around it; everything else field by
// field, beside the native record where there is one, with what the conversion loses and the
// unknown fields below. title names the input.
void PrintMessage(const google::protobuf::Message& message, const std::string& title,
                  std::FILE* out, const Palette& palette);

// The native record, or those in the message, as indented lines; says so when there is none.
std::string NativeText(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
