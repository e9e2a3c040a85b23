// A batch of entries for one client, built on an arena.
//
// Everything in the batch is allocated from the arena, and Reset() releases it all at once; no
// message is destroyed on its own. The converters treat a message on an arena like any other.
#include <google/protobuf/arena.h>

#include <cstdio>
#include <string>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "native/intf_entry_builder.h"

namespace pb = zorl2::protobuf;

static IntfEntry Entry(unsigned batch, unsigned number) {
  IntfEntry::GeneralInfo general;
  general.intf_name = "lag" + std::to_string(batch) + "." + std::to_string(number);
  IntfEntry::TypeInfo type;
  type.interfaceType = IntfEntry::ETHERNET_BUNDLE;
  return IntfEntryBuilder()
      .addZorId(
          zorid_t{{20, static_cast<std::uint8_t>(batch), 0, static_cast<std::uint8_t>(number)}})
      .addGeneralInfo(std::move(general))
      .addTypeInfo(type)
      .setInterfaceCategory(L2)
      .Build();
}

int main() {
  ZORL2InfoClientConfig client;
  client.protocolType = LACP;
  client.interfaceCategories = {L2};
  client.clientAddress = 0x1234;
  client.token = "client 7";

  IntfEntryConverter entries;
  google::protobuf::Arena arena;
  std::string bytes;
  for (unsigned batch = 0; batch < 3; ++batch) {
    auto* list = google::protobuf::Arena::CreateMessage<pb::IntfEntryList>(&arena);
    if (!ZORL2InfoClientConfigConverter().Convert(client, *list->mutable_infoclient())) return 1;
    for (unsigned number = 0; number < 200; ++number) {
      // Adds the message to the list first and fills it in place, so that nothing is copied.
      if (!entries.Convert(Entry(batch, number), *list->add_intfentry())) return 1;
    }
    if (!list->SerializeToString(&bytes)) return 1;
    std::printf("batch %u: %d entries, %zu bytes on the wire, %llu bytes of the arena\n", batch,
                list->intfentry_size(), bytes.size(),
                static_cast<unsigned long long>(arena.SpaceUsed()));
    arena.Reset();  // also releases list
  }

  pb::IntfEntryList received;
  IntfEntry last;
  if (!received.ParseFromString(bytes) || received.intfentry_size() != 200 ||
      !entries.Convert(received.intfentry(199), last)) {
    return 1;
  }
  return last.getGeneralInfo().intf_name == "lag2.199" && arena.SpaceUsed() == 0 ? 0 : 1;
}
