// What a message loses on its way to a native record and back.
#pragma once

#include <google/protobuf/message.h>

#include <string>
#include <vector>

namespace zorl2_inspect {

struct Loss {
  std::string path;
  std::string before;
  std::string after;
  std::string reason;
};

// Compares a message with what ThereAndBack made of it.
std::vector<Loss> FindLosses(const google::protobuf::Message& before,
                             const google::protobuf::Message& after);

}  // namespace zorl2_inspect
