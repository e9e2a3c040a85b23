// The last occurrence of each field of a message.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

inline constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// How deep the runtime lets messages and groups nest. It rejects the next level.
inline constexpr int kDepthLimit = 100;

// Returns, for each field of the type by its index, where its last occurrence starts in the bytes,
// or kNowhere. The parser replaces or merges earlier occurrences. Stops at damage. `depth` is the
// nesting of the message.
std::vector<std::size_t> LastOccurrences(std::string_view bytes,
                                         const google::protobuf::Descriptor& type, int depth);

}  // namespace zorl2_inspect
