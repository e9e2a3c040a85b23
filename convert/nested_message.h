// Not installed. Nested messages that are allocated before they are marked present.
#pragma once

#include <google/protobuf/arena.h>

#include <type_traits>

namespace zorl2_mapping {

// What mutable_...() returns. The runtime's own marks the nested message present and allocates it
// then; when that allocation fails, the mark stays without a message behind it, and the next
// Clear() of the outer message faults. Here std::bad_alloc leaves the field absent.
template <auto kGet, auto kMutable, auto kAdopt, typename Message>
[[gnu::always_inline]] inline auto& Nested(Message& message) {
  using Field = std::decay_t<decltype((message.*kGet)())>;
  // A message without the field answers with the one default instance.
  if (&(message.*kGet)() == &Field::default_instance()) {
    (message.*kAdopt)(google::protobuf::Arena::CreateMessage<Field>(message.GetArena()));
  }
  return *(message.*kMutable)();
}

}  // namespace zorl2_mapping

#define ZORL2_NESTED(message, field)                                                            \
  (zorl2_mapping::Nested<&std::decay_t<decltype(message)>::field,                               \
                         &std::decay_t<decltype(message)>::mutable_##field,                     \
                         &std::decay_t<decltype(message)>::unsafe_arena_set_allocated_##field>( \
      message))
