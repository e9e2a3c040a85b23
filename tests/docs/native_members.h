// The native member of each mapped field and its type, checked by the compiler.
#pragma once

#include <string>
#include <vector>

struct NativeMember {
  // The message and its field, as in "GeneralInfo.intf_name".
  std::string field;
  // As in "IntfEntry::GeneralInfo::intf_name".
  std::string member;
  // As in "uint16".
  std::string type;
};

const std::vector<NativeMember>& NativeMembers();
