// Not installed. Nested messages that are not left marked present without being there.
#pragma once

#include <type_traits>

namespace zorl2_mapping {

// What mutable_...() returns. The runtime's own marks the nested message present and allocates it
// then; when that allocation fails, the mark would stay without a message behind it, and the next
// Clear() of the outer message would fault. Here std::bad_alloc leaves the field absent.
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
