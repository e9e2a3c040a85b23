// Not installed. Access to nested messages that is safe when an allocation fails.
#pragma once

#include <type_traits>

namespace zorl2_mapping {

// Returns what mutable_...() returns. The runtime marks the field present before it allocates the
// submessage. When that allocation fails, the mark is removed, or the next Clear() of the outer
// message would fault.
template <auto kMutable, auto kClear, typename Message>
[[gnu::always_inline]] inline auto& Nested(Message& message) {
  try {
    return *(message.*kMutable)();
  } catch (...) {
    (message.*kClear)();
    throw;
  }
}

}  // namespace zorl2_mapping

#define ZORL2_NESTED(message, field)                                        \
  (zorl2_mapping::Nested<&std::decay_t<decltype(message)>::mutable_##field, \
                         &std::decay_t<decltype(message)>::clear_##field>(message))
