#include "bench/fixtures.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "native/intf_entry_builder.h"

namespace zorl2_bench {

namespace {

std::string Address(std::uint32_t high, std::uint32_t number) {
  char text[18];
  std::snprintf(text, sizeof(text), "02:%02x:%02x:%02x:%02x:%02x", high & 0xff, number >> 24,
                (number >> 16) & 0xff, (number >> 8) & 0xff, number & 0xff);
  return text;
}

template <typename State, typename Make>
std::vector<std::pair<zorid_t, State>> States(int count, Order order, Make make) {
  std::vector<std::pair<zorid_t, State>> states;
  for (int i = 0; i < count; ++i) {
    // Uses every third number, so that carries between octets are irregular.
    states.emplace_back(Identifier(static_cast<std::uint32_t>(i) * 3 + 7), make(i));
  }
  if (order == Order::kShuffled) std::shuffle(states.begin(), states.end(), std::mt19937(42));
  return states;
}

}  // namespace

zorid_t Identifier(std::uint32_t number) {
  return {{static_cast<std::uint8_t>(number >> 24), static_cast<std::uint8_t>(number >> 16),
           static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)}};
}

IntfEntry Entry(std::uint32_t number) {
  char name[21];
  std::snprintf(name, sizeof(name), "hundredGigE%09u", number % 1000000000);
  IntfEntryBuilder builder;
  builder.addZorId(Identifier(0x01020000 + number))
      .addParent(Identifier(0x05060000 + number))
      .addGeneralInfo({name, Address(0x1a, number), number + 17, Address(0x2b, number),
                       static_cast<std::uint16_t>(number + 1001)})
      .addStatusInfo({IntfEntry::IF_ADMIN_DOWN, IntfEntry::UP, IntfEntry::LINK_DOWN,
                      number + 100000, true, false, true})
      .addPhysicalInfo({number + 9000, IntfEntry::SPEED_100_GBS, IntfEntry::FULL})
      .addTypeInfo(
          {IntfEntry::ETHERNET_BUNDLE, {true, false, true, false, true, true}, IntfEntry::S_VLAN})
      .addShutdownProto(STP)
      .addShutdownProto(BACKUPLINK)
      .addBlockInfo({LACP, BLOCK_STATE_BLOCK})
      .addBlockInfo({ERPS, BLOCK_STATE_FORWARD})
      .addBlockInfo({CFM, BLOCK_STATE_BLOCK})
      .setInterfaceCategory(L2_SUB_IF);
  return builder.Build();
}

ZORL2InfoClientConfig Registration(std::uint32_t number) {
  ZORL2InfoClientConfig config;
  config.protocolType = ERPS;
  config.interfaceCategories = {L1, VP, VIRTUAL_IF};
  config.clientAddress = 0xfedcba9800000000U + number;
  config.token = "token of client " + std::to_string(number % 1000 + 1000);
  return config;
}

LagMemberOperation Operation(std::uint32_t number) {
  LagMemberOperation operation;
  operation.lag = Identifier(0x0a0b0000 + number);
  operation.member = Identifier(0x0c0d0000 + number);
  operation.token = 0x123456789abc0000U + number;
  operation.managerData = 0x5a5a5a5a;
  operation.collecting = true;
  return operation;
}

std::vector<std::pair<zorid_t, bool>> ShutStates(int count, Order order) {
  return States<bool>(count, order, [](int i) { return i % 3 != 0; });
}

std::vector<std::pair<zorid_t, BlockState>> BlockStates(int count, Order order) {
  return States<BlockState>(
      count, order, [](int i) { return i % 3 != 0 ? BLOCK_STATE_BLOCK : BLOCK_STATE_FORWARD; });
}

}  // namespace zorl2_bench
