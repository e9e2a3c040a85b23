// An entry over the library boundary and back, with an exception and a cast across it.
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

#include "convert/intf_entry_converter.h"
#include "native/intf_entry_builder.h"

#ifdef NDEBUG
constexpr char kAssertions[] = "compiled with NDEBUG";
#else
constexpr char kAssertions[] = "compiled with assertions";
#endif

static bool Fail(const char* what) {
  std::printf("FAILED: %s\n", what);
  return false;
}

static bool Run() {
  IntfEntry::GeneralInfo general;
  general.intf_name = "ge-0/0/1";
  general.phy_addr = "02:00:5e:10:00:01";
  general.bridge_port_number = 17;
  IntfEntry::PhysicalInfo physical;
  physical.intf_mtu = 9216;
  physical.eth_speed = IntfEntry::SPEED_25_GBS;
  const IntfEntry entry = IntfEntryBuilder()
                              .addZorId(zorid_t{{10, 20, 30, 40}})
                              .addParent(zorid_t{{50, 60, 70, 80}})
                              .addGeneralInfo(general)
                              .addPhysicalInfo(physical)
                              .addShutdownProto(STP)
                              .addBlockInfo({ERPS, BLOCK_STATE_BLOCK})
                              .setInterfaceCategory(L2)
                              .Build();

  using Base = Converter<zorl2::protobuf::IntfEntry, IntfEntry>;
  const std::unique_ptr<Base> converter = std::make_unique<IntfEntryConverter>();
  if (dynamic_cast<IntfEntryConverter*>(converter.get()) == nullptr) return Fail("the cast");

  zorl2::protobuf::IntfEntry message;
  if (!converter->Convert(entry, message)) return Fail("native to message");
  const std::string bytes = message.SerializeAsString();
  zorl2::protobuf::IntfEntry received;
  if (!received.ParseFromString(bytes)) return Fail("parsing");
  IntfEntry copy;
  if (!converter->Convert(received, copy)) return Fail("message to native");
  if (copy.getId() != entry.getId() || copy.getParent() != entry.getParent() ||
      copy.getGeneralInfo().intf_name != "ge-0/0/1" ||
      copy.getGeneralInfo().bridge_port_number != 17 || copy.getPhysicalInfo().intf_mtu != 9216 ||
      copy.getPhysicalInfo().eth_speed != IntfEntry::SPEED_25_GBS ||
      copy.getShutdownProtos() != std::list<ProtocolType>{STP} ||
      copy.getBlockInfo().front().protocol != ERPS || copy.getInterfaceCategory() != L2) {
    return Fail("the entry came back changed");
  }

  const IntfEntry odd =
      IntfEntryBuilder().setInterfaceCategory(static_cast<InterfaceCategory>(7)).Build();
  try {
    converter->Convert(odd, message);
    return Fail("an unlisted category was taken");
  } catch (const std::out_of_range&) {
  }
  std::printf(
      "proved, %s: an entry of %zu bytes came back whole, and an exception and a cast "
      "crossed the library boundary\n",
      kAssertions, bytes.size());
  return true;
}

int main() { return Run() ? 0 : 1; }
