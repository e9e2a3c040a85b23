// Everything that a conversion to native rejects or loses, also in a message that does not convert.
#pragma once

#include <google/protobuf/message.h>

#include <vector>

#include "check/check.h"

namespace zorl2_inspect {

struct Findings {
  // Why each element does not convert: its first reason, with the path from the whole message.
  std::vector<zorl2::check::Verdict> rejections;
  // What the elements that convert lose, the most serious kind first.
  std::vector<zorl2::check::Loss> losses;
};

Findings FindAll(const google::protobuf::Message& message);

// Like zorl2::check::FindLosses(), but reports very many unknown fields as one loss with their
// number, to bound the memory.
std::vector<zorl2::check::Loss> FindLossesBriefly(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
