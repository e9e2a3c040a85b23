// Many entries through one message.
//
// The converter clears a message before it fills it, and a cleared message keeps its storage. After
// the first entry, others of its size allocate nothing for the message. The buffer and the received
// record keep their storage, too.
#include <cstdio>
#include <string>

#include "convert/intf_entry_converter.h"
#include "native/intf_entry_builder.h"

static IntfEntry Entry(unsigned number) {
  char name[32];
  std::snprintf(name, sizeof(name), "ge-0/0/%05u", number);
  IntfEntry::GeneralInfo general;
  general.intf_name = name;
  general.bridge_port_number = static_cast<std::uint16_t>(number);
  return IntfEntryBuilder()
      .addZorId(zorid_t{
          {10, 0, static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)}})
      .addGeneralInfo(std::move(general))
      .setInterfaceCategory(L2)
      .Build();
}

int main() {
  IntfEntryConverter converter;
  zorl2::protobuf::IntfEntry message;
  zorl2::protobuf::IntfEntry parsed;
  std::string bytes;
  IntfEntry received;
  std::size_t total = 0;
  std::size_t first_size = 0;
  for (unsigned number = 0; number < 10000; ++number) {
    if (!converter.Convert(Entry(number), message)) return 1;
    if (!message.SerializeToString(&bytes)) return 1;  // reuses the capacity of bytes
    total += bytes.size();
    if (number == 0) first_size = message.SpaceUsedLong();

    if (!parsed.ParseFromString(bytes) || !converter.Convert(parsed, received)) return 1;
    if (received.getGeneralInfo().bridge_port_number != number) return 1;
  }
  std::printf(
      "10000 entries, %zu bytes; the message took %zu bytes of memory after the first "
      "and %zu after the last\n",
      total, first_size, message.SpaceUsedLong());
  return message.SpaceUsedLong() == first_size ? 0 : 1;
}
