/*
 * c_peer MESSAGE: reads the message on standard input with protobuf-c and writes it again. The peer
 * shares only the schema with the library.
 */
#include <protobuf-c/protobuf-c.h>
#include <stdio.h>
#include <string.h>

#include "audit_info.pb-c.h"
#include "information_client.pb-c.h"
#include "interface_entry.pb-c.h"
#include "intf_state.pb-c.h"
#include "l2_sub_if.pb-c.h"
#include "lag.pb-c.h"
#include "sysinfo.pb-c.h"
#include "virtual_if.pb-c.h"
#include "zorid.pb-c.h"

static const ProtobufCMessageDescriptor* const kMessages[] = {
    &zorl2__protobuf__audit_info__descriptor,
    &zorl2__protobuf__block_info__descriptor,
    &zorl2__protobuf__block_state_info__descriptor,
    &zorl2__protobuf__block_state_sync__descriptor,
    &zorl2__protobuf__general_info__descriptor,
    &zorl2__protobuf__hold_time_config__descriptor,
    &zorl2__protobuf__hold_time_instance__descriptor,
    &zorl2__protobuf__information_client__descriptor,
    &zorl2__protobuf__interface_flags__descriptor,
    &zorl2__protobuf__intf_category__descriptor,
    &zorl2__protobuf__intf_entry__descriptor,
    &zorl2__protobuf__intf_entry_list__descriptor,
    &zorl2__protobuf__intf_indication__descriptor,
    &zorl2__protobuf__l2_subinterface_operation__descriptor,
    &zorl2__protobuf__lag_load_balance__descriptor,
    &zorl2__protobuf__lag_load_balance_hash_type__descriptor,
    &zorl2__protobuf__lag_member_operation_proto__descriptor,
    &zorl2__protobuf__physical_info__descriptor,
    &zorl2__protobuf__redundancy_group_fields__descriptor,
    &zorl2__protobuf__shut_state_info__descriptor,
    &zorl2__protobuf__shut_state_sync__descriptor,
    &zorl2__protobuf__status_info__descriptor,
    &zorl2__protobuf__sys_info__descriptor,
    &zorl2__protobuf__sys_info_indication__descriptor,
    &zorl2__protobuf__type_info__descriptor,
    &zorl2__protobuf__virtual_interface_operation__descriptor,
    &zorl2__protobuf__zorid__descriptor,
};

int main(int argc, char** argv) {
  static uint8_t input[65536];
  static uint8_t output[65536];
  const size_t count = sizeof(kMessages) / sizeof(kMessages[0]);
  size_t size, i;
  ProtobufCMessage* message;

  if (argc != 2) return 2;
  size = fread(input, 1, sizeof(input), stdin);
  for (i = 0; i < count && strcmp(kMessages[i]->short_name, argv[1]) != 0; ++i) {
  }
  if (i == count) return 2;
  message = protobuf_c_message_unpack(kMessages[i], NULL, size, input);
  if (message == NULL || message->n_unknown_fields != 0) return 3;
  size = protobuf_c_message_get_packed_size(message);
  if (size > sizeof(output)) return 4;
  protobuf_c_message_pack(message, output);
  protobuf_c_message_free_unpacked(message, NULL);
  return fwrite(output, 1, size, stdout) == size && fflush(stdout) == 0 ? 0 : 5;
}
