#include "tools/system/kernel_links.h"

#include <fmt/format.h>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/if_bridge.h>
#include <linux/if_ether.h>
#include <netlink/cache.h>
#include <netlink/netlink.h>
#include <netlink/route/link.h>
#include <netlink/route/link/bridge.h>
#include <netlink/route/link/vlan.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "native/intf_entry_builder.h"

namespace zorl2_inspect {
namespace {

struct SocketFree {
  void operator()(nl_sock* socket) const { nl_socket_free(socket); }
};
struct CacheFree {
  void operator()(nl_cache* cache) const { nl_cache_free(cache); }
};
struct LinkPut {
  void operator()(rtnl_link* link) const { rtnl_link_put(link); }
};
using Socket = std::unique_ptr<nl_sock, SocketFree>;
using Cache = std::unique_ptr<nl_cache, CacheFree>;
using Link = std::unique_ptr<rtnl_link, LinkPut>;

void Check(int result, const char* what) {
  if (result < 0) {
    throw std::runtime_error(
        fmt::format("the kernel's interfaces: cannot {}: {}", what, nl_geterror(result)));
  }
}

Cache Links(nl_sock* socket, int family) {
  nl_cache* cache = nullptr;
  Check(rtnl_link_alloc_cache(socket, family, &cache), "list them");
  return Cache(cache);
}

// The first word of a file in sysfs; empty if there is no such file or the driver does not answer.
std::string Sysfs(const std::string& name, const char* file) {
  std::ifstream in("/sys/class/net/" + name + "/" + file);
  std::string word;
  in >> word;
  return word;
}

zorid_t Identifier(int index) {
  const auto number = static_cast<std::uint32_t>(index);
  zorid_t id;
  for (int i = 0; i < 4; ++i) id.octets[i] = static_cast<std::uint8_t>(number >> (24 - 8 * i));
  return id;
}

std::string Type(rtnl_link* link) {
  const char* type = link == nullptr ? nullptr : rtnl_link_get_type(link);
  return type == nullptr ? "" : type;
}

bool IsBundle(const std::string& type) { return type == "bond" || type == "team"; }

// The facts that determine the record, read once.
struct Facts {
  Facts(rtnl_link* from, nl_cache* all, nl_cache* bridged)
      : link(from),
        index(rtnl_link_get_ifindex(from)),
        type(Type(from)),
        flags(rtnl_link_get_flags(from)),
        master(rtnl_link_get_master(from)),
        vlan(type == "vlan") {
    const char* text = rtnl_link_get_name(link);
    name = text == nullptr ? "" : text;
    const Link above(master > 0 ? rtnl_link_get(all, master) : nullptr);
    const std::string master_type = Type(above.get());
    bridge_port = master_type == "bridge";
    bundle_port = IsBundle(master_type);
    if (bridge_port) {
      const Link port(rtnl_link_get(bridged, index));
      if (port && rtnl_link_is_bridge(port.get()) != 0) {
        port_state = rtnl_link_bridge_get_port_state(port.get());
      }
    }
    // sysfs may belong to another network namespace, where the same name means something else.
    sysfs = Sysfs(name, "ifindex") == fmt::format("{}", index);
    physical = sysfs && std::ifstream("/sys/class/net/" + name + "/device/uevent").good();
  }

  rtnl_link* link;
  int index;
  std::string name;
  std::string type;
  unsigned flags;
  int master;
  bool bridge_port;
  bool bundle_port;
  bool vlan;
  int port_state = -1;
  bool sysfs;
  bool physical;
};

IntfEntry::GeneralInfo GeneralOf(const Facts& facts) {
  IntfEntry::GeneralInfo general;
  general.intf_name = facts.name;
  if (nl_addr* address = rtnl_link_get_addr(facts.link)) {
    char text[128];
    general.phy_addr = nl_addr2str(address, text, sizeof(text));
  }
  if (facts.bridge_port && facts.sysfs) {
    // Hexadecimal, such as 0x1.
    const std::string port = Sysfs(facts.name, "brport/port_no");
    general.bridge_port_number =
        static_cast<std::uint16_t>(std::strtoul(port.c_str(), nullptr, 16));
  }
  return general;
}

std::uint32_t SpeedKbps(const Facts& facts) {
  if (!facts.sysfs) return 0;
  // In Mbit/s; -1 or no answer if the kernel has no speed.
  const long long mbps = std::strtoll(Sysfs(facts.name, "speed").c_str(), nullptr, 10);
  return mbps > 0 && mbps <= 4000000 ? static_cast<std::uint32_t>(mbps * 1000) : 0;
}

IntfEntry::StatusInfo StatusOf(const Facts& facts, std::uint32_t kbps) {
  IntfEntry::StatusInfo status;
  const bool admin_up = (facts.flags & IFF_UP) != 0;
  const int oper = rtnl_link_get_operstate(facts.link);
  // Some drivers do not report an operational state; the running flag decides then.
  const bool oper_up = oper == IF_OPER_UP ||
                       (oper == IF_OPER_UNKNOWN && admin_up && (facts.flags & IFF_RUNNING) != 0);
  status.adminStatus = admin_up ? IntfEntry::IF_ADMIN_UP : IntfEntry::IF_ADMIN_DOWN;
  status.operationalStatus = oper_up ? IntfEntry::UP : IntfEntry::DOWN;
  status.linkStatus = (facts.flags & IFF_LOWER_UP) != 0 ? IntfEntry::LINK_UP : IntfEntry::LINK_DOWN;
  status.operationalSpeed = kbps;
  status.configShutdown = !admin_up;
  return status;
}

IntfEntry::PhysicalInfo PhysicalOf(const Facts& facts, std::uint32_t kbps) {
  IntfEntry::PhysicalInfo physical;
  physical.intf_mtu = rtnl_link_get_mtu(facts.link);
  for (const auto& [speed, rate] : speedKbpsTable) {
    // The last value is a wrapped number and not a rate of a port.
    if (rate == kbps && speed != IntfEntry::SPEED_10_TBS) physical.eth_speed = speed;
  }
  const std::string duplex = facts.sysfs ? Sysfs(facts.name, "duplex") : "";
  if (duplex == "full") physical.eth_duplex_mode = IntfEntry::FULL;
  if (duplex == "half") physical.eth_duplex_mode = IntfEntry::HALF;
  return physical;
}

IntfEntry::TypeInfo TypeOf(const Facts& facts) {
  IntfEntry::TypeInfo type;
  if (facts.vlan) {
    type.interfaceType = IntfEntry::ETHERNET_L2_VLAN;
    const int protocol = rtnl_link_vlan_get_protocol(facts.link);
    type.vlanType = ntohs(static_cast<std::uint16_t>(protocol)) == ETH_P_8021AD ? IntfEntry::S_VLAN
                                                                                : IntfEntry::C_VLAN;
  } else if (IsBundle(facts.type)) {
    type.interfaceType = IntfEntry::ETHERNET_BUNDLE;
  } else {
    type.interfaceType =
        rtnl_link_get_arptype(facts.link) == ARPHRD_ETHER ? IntfEntry::ETHERNET : IntfEntry::OTHER;
  }
  type.interfaceFlags.if_l2_switching = facts.bridge_port;
  type.interfaceFlags.if_in_bundle = facts.bundle_port;
  type.interfaceFlags.l2_bundle = facts.bridge_port && IsBundle(facts.type);
  type.interfaceFlags.l2_sub_if = facts.vlan;
  type.interfaceFlags.point_to_point = (facts.flags & IFF_POINTOPOINT) != 0;
  type.interfaceFlags.if_multicast = (facts.flags & IFF_MULTICAST) != 0;
  return type;
}

InterfaceCategory CategoryOf(const Facts& facts) {
  // A port of a bridge switches frames, whatever its type; a VLAN remains a sub-interface.
  if (facts.vlan) return L2_SUB_IF;
  if (facts.bridge_port) return L2;
  return facts.physical ? L1 : VIRTUAL_IF;
}

IntfEntry EntryOf(const Facts& facts) {
  int parent = facts.master;
  if (parent <= 0 && facts.vlan) parent = rtnl_link_get_link(facts.link);
  const std::uint32_t kbps = SpeedKbps(facts);
  IntfEntry::StatusInfo status = StatusOf(facts, kbps);
  IntfEntryBuilder builder;
  if (facts.port_state >= 0) {
    const bool forwards = facts.port_state == BR_STATE_FORWARDING;
    status.extraBlocking = !forwards;
    builder.addBlockInfo({STP, forwards ? BLOCK_STATE_FORWARD : BLOCK_STATE_BLOCK});
  }
  builder.addZorId(Identifier(facts.index))
      .addParent(Identifier(std::max(parent, 0)))
      .addGeneralInfo(GeneralOf(facts))
      .addStatusInfo(status)
      .addPhysicalInfo(PhysicalOf(facts, kbps))
      .addTypeInfo(TypeOf(facts))
      .setInterfaceCategory(CategoryOf(facts));
  return builder.Build();
}

}  // namespace

std::vector<IntfEntry> KernelEntries() {
  const Socket socket(nl_socket_alloc());
  if (!socket) throw std::bad_alloc();
  Check(nl_connect(socket.get(), NETLINK_ROUTE), "connect");
  const Cache all = Links(socket.get(), AF_UNSPEC);
  // Only this listing has the states of the ports. A kernel without bridges has no such listing.
  const Cache bridged = Links(socket.get(), AF_BRIDGE);
  std::vector<std::pair<int, rtnl_link*>> links;
  for (nl_object* object = nl_cache_get_first(all.get()); object != nullptr;
       object = nl_cache_get_next(object)) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): what the library's cache holds.
    auto* link = reinterpret_cast<rtnl_link*>(object);
    links.emplace_back(rtnl_link_get_ifindex(link), link);
  }
  std::sort(links.begin(), links.end());
  std::vector<IntfEntry> entries;
  entries.reserve(links.size());
  for (const auto& [index, link] : links) {
    entries.push_back(EntryOf(Facts(link, all.get(), bridged.get())));
  }
  return entries;
}

}  // namespace zorl2_inspect
