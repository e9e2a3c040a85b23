// What is written first. Memory runs out at every allocation in turn, and what the destination
// then holds is always the beginning of the promised order, never something behind a gap.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "native/intf_entry_builder.h"
#include "tests/reliability/exhaust.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::ElementsAre;

// Too long to be kept inside a string object.
const std::string kName(50, 'n');
const std::string kAddress(51, 'a');
const std::string kGroup(52, 'g');

// One element per step, in the promised order: whether it is done.
using Steps = std::vector<bool>;

// How many steps are done; a done one behind one that is not is an error.
std::size_t Done(const Steps& steps) {
  const auto first = std::find(steps.begin(), steps.end(), false);
  EXPECT_EQ(std::find(first, steps.end(), true), steps.end())
      << "a step was done before step " << first - steps.begin();
  return static_cast<std::size_t>(first - steps.begin());
}

// The numbers of steps that were done when memory ran out, and when it did not.
template <typename Fresh, typename Operate, typename StepsOf>
std::set<std::size_t> Stops(Fresh fresh, Operate operate, StepsOf stepsOf) {
  std::set<std::size_t> stops;
  proof::Exhaust(fresh, operate,
                 [&](const auto& destination, bool) { stops.insert(Done(stepsOf(destination))); });
  return stops;
}

template <typename Message, typename Operate, typename StepsOf>
std::set<std::size_t> StopsOfMessage(Operate operate, StepsOf stepsOf) {
  return Stops([] { return Message(); }, operate, stepsOf);
}

bool Holds(const pb::Zorid& message, std::initializer_list<std::uint32_t> octets) {
  return std::equal(message.value().begin(), message.value().end(), octets.begin(), octets.end());
}

IntfEntry::GeneralInfo General() { return {kName, kAddress, 7, kGroup, 8}; }

Steps StepsOf(const pb::GeneralInfo& message) {
  return {message.intf_name() == kName, message.phy_addr() == kAddress,
          message.bridge_port_number() == 8, message.redundancy_group_id() == 7,
          message.redundancy_group_phy_addr() == kGroup};
}

TEST(Order, GeneralInfoToMessage_InTheOrderOfTheFields) {
  const auto native = General();
  EXPECT_THAT(StopsOfMessage<pb::GeneralInfo>(
                  [&](pb::GeneralInfo& message) {
                    IntfEntryConvertHelperZOR().ConvertGeneralInfo(native, message);
                  },
                  [](const pb::GeneralInfo& message) { return StepsOf(message); }),
              ElementsAre(0, 1, 4, 5));
}

TEST(Order, GeneralInfoToNative_InTheOrderOfTheFields) {
  pb::GeneralInfo message;
  message.set_intf_name(kName);
  message.set_phy_addr(kAddress);
  message.set_bridge_port_number(8);
  message.set_redundancy_group_id(7);
  message.set_redundancy_group_phy_addr(kGroup);
  EXPECT_THAT(
      Stops([] { return IntfEntry::GeneralInfo(); },
            [&](IntfEntry::GeneralInfo& native) {
              EXPECT_TRUE(IntfEntryConvertHelperProtobuf().ConvertGeneralInfo(message, native));
            },
            [](const IntfEntry::GeneralInfo& native) -> Steps {
              return {native.intf_name == kName, native.phy_addr == kAddress,
                      native.bridge_port_number == 8, native.redundancy_group_id == 7,
                      native.redundancy_group_phy_addr == kGroup};
            }),
      ElementsAre(0, 1, 4, 5));
}

TEST(Order, TypeInfoToMessage_TypeThenFlagsThenVlanType) {
  const IntfEntry::TypeInfo native{
      IntfEntry::ETHERNET, {true, true, true, true, true, true}, IntfEntry::S_VLAN};
  EXPECT_THAT(StopsOfMessage<pb::TypeInfo>(
                  [&](pb::TypeInfo& message) {
                    IntfEntryConvertHelperZOR().ConvertTypeInfo(native, message);
                  },
                  [](const pb::TypeInfo& message) -> Steps {
                    return {message.interfacetype() == pb::ETHERNET,
                            message.interfaceflags().IsInitialized(),
                            message.vlantype() == pb::S_VLAN};
                  }),
              ElementsAre(1, 3));
}

IntfEntry Entry() {
  IntfEntryBuilder builder;
  builder.addZorId(zorid_t{{1, 2, 3, 4}})
      .addParent(zorid_t{{5, 6, 7, 8}})
      .addGeneralInfo(General())
      .addShutdownProto(STP)
      .addShutdownProto(LACP)
      .addBlockInfo({ERPS, BLOCK_STATE_BLOCK})
      .addBlockInfo({CFM, BLOCK_STATE_BLOCK})
      .setInterfaceCategory(VP);
  return builder.Build();
}

TEST(Order, EntryToMessage_IdentifiersPartsProtocolsBlocksCategory) {
  const IntfEntry entry = Entry();
  EXPECT_THAT(StopsOfMessage<pb::IntfEntry>(
                  [&](pb::IntfEntry& message) { IntfEntryConverter().Convert(entry, message); },
                  [](const pb::IntfEntry& message) {
                    Steps steps{Holds(message.zorid(), {1, 2, 3, 4}),
                                Holds(message.parent(), {5, 6, 7, 8})};
                    const Steps general = StepsOf(message.generalinfo());
                    steps.insert(steps.end(), general.begin(), general.end());
                    const Steps others{
                        message.statusinfo().IsInitialized(),
                        message.physicalinfo().IsInitialized(),
                        message.typeinfo().IsInitialized(),
                        message.shutdownprotos_size() == 2,
                        message.blockinfo_size() == 2 && message.blockinfo(1).IsInitialized(),
                        message.has_intfcategory()};
                    steps.insert(steps.end(), others.begin(), others.end());
                    return steps;
                  }),
              // Each nested message, each string and each list takes memory.
              ElementsAre(0, 1, 2, 3, 6, 7, 8, 9, 10, 11, 13));
}

// A status that is refused is noticed behind the three strings.
TEST(Order, EntryToNative_CopiesTheStringsBeforeItRefusesAStatus) {
  pb::IntfEntry message;
  ASSERT_TRUE(IntfEntryConverter().Convert(Entry(), message));
  message.mutable_statusinfo()->set_adminstatus(static_cast<pb::AdminStatus>(2));
  IntfEntry entry;
  // The first refusal builds the table of refusals.
  EXPECT_THROW(IntfEntryConverter().Convert(message, entry), std::out_of_range);
  proof::FailAllocation(1000);
  EXPECT_THROW(IntfEntryConverter().Convert(message, entry), std::out_of_range);
  proof::StopFailing();
  EXPECT_EQ(proof::AllocationSize(1), kName.size() + 1);
  EXPECT_EQ(proof::AllocationSize(2), kAddress.size() + 1);
  EXPECT_EQ(proof::AllocationSize(3), kGroup.size() + 1);
}

TEST(Order, AggregationOperationToMessage_BothIdentifiersArePresentBeforeEitherIsFilled) {
  const LagMemberOperation operation{{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 9, 10, true, true};
  EXPECT_THAT(StopsOfMessage<pb::LagMemberOperationProto>(
                  [&](pb::LagMemberOperationProto& message) {
                    EXPECT_TRUE(LagMemberConverter().Convert(operation, message));
                  },
                  [](const pb::LagMemberOperationProto& message) -> Steps {
                    return {message.has_lag(),
                            message.has_member(),
                            Holds(message.lag(), {1, 2, 3, 4}),
                            Holds(message.member(), {5, 6, 7, 8}),
                            message.has_token(),
                            message.has_collecting(),
                            message.has_distributing()};
                  }),
              ElementsAre(0, 1, 2, 3, 7));
}

TEST(Order, RegistrationToMessage_AddressProtocolFlagsToken) {
  ZORL2InfoClientConfig config;
  config.clientAddress = 9;
  config.protocolType = CFM;
  config.token = kName;
  EXPECT_THAT(StopsOfMessage<pb::InformationClient>(
                  [&](pb::InformationClient& message) {
                    EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
                  },
                  [](const pb::InformationClient& message) -> Steps {
                    return {message.clientaddress() == 9, message.protocoltype() == pb::CFM,
                            message.intfcategory().IsInitialized(), message.token() == kName};
                  }),
              ElementsAre(2, 3, 4));
}

TEST(Order, RegistrationToNative_AddressProtocolCategoriesToken) {
  pb::InformationClient message;
  message.set_clientaddress(9);
  message.set_protocoltype(pb::CFM);
  pb::IntfCategory& flags = *message.mutable_intfcategory();
  flags.set_l1(true);
  flags.set_l2(true);
  flags.set_vp(true);
  flags.set_l2_sub_if(true);
  flags.set_virtual_if(true);
  message.set_token(kName);
  EXPECT_THAT(Stops([] { return ZORL2InfoClientConfig(); },
                    [&](ZORL2InfoClientConfig& config) {
                      EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(message, config));
                    },
                    [](const ZORL2InfoClientConfig& config) {
                      Steps steps{config.clientAddress == 9, config.protocolType == CFM};
                      for (const auto category : {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF}) {
                        steps.push_back(config.interfaceCategories.count(category) != 0);
                      }
                      steps.push_back(config.token == kName);
                      return steps;
                    }),
              ElementsAre(2, 3, 4, 5, 6, 7, 8));
}

// Whatever the order of the elements, each is merged before the next.
template <typename Converter, typename Message, typename Signal, typename States>
void ExpectMergedInOrder(const std::vector<std::uint8_t>& order, Message message,
                         States Signal::*states) {
  for (const std::uint8_t first : order) {
    auto& element = *message.add_intfs();
    for (const std::uint32_t octet : {first, std::uint8_t{2}, std::uint8_t{3}, std::uint8_t{4}}) {
      element.mutable_zorid()->add_value(octet);
    }
    element.set_state(static_cast<decltype(element.state())>(1));
  }
  EXPECT_THAT(Stops([] { return Signal(); },
                    [&](Signal& signal) { EXPECT_TRUE(Converter().Convert(message, signal)); },
                    [&](const Signal& signal) {
                      Steps steps{signal.protocol == STP};
                      for (const std::uint8_t first : order) {
                        const auto found = (signal.*states).find(zorid_t{{first, 2, 3, 4}});
                        steps.push_back(found != (signal.*states).end() && found->second == 1);
                      }
                      return steps;
                    }),
              ElementsAre(1, 2, 3, 4));
}

TEST(Order, SignalsToNative_TheProtocolThenEachElement) {
  pb::ShutStateSync shut;
  shut.set_shutprotocol(pb::STP);
  pb::BlockStateSync block;
  block.set_blockprotocol(pb::STP);
  for (const auto& order : {std::vector<std::uint8_t>{1, 5, 9}, {9, 5, 1}, {5, 1, 9}}) {
    ExpectMergedInOrder<ShutStateConverter>(order, shut, &ShutStateInfoSyncSignal::shutStates);
    ExpectMergedInOrder<BlockStateConverter>(order, block, &BlockStateInfoSyncSignal::blockStates);
  }
}

TEST(Order, BuilderAssignsTheStringsOneAfterTheOther) {
  const auto native = General();
  EXPECT_THAT(Stops([] { return IntfEntryBuilder(); },
                    [&](IntfEntryBuilder& builder) { builder.addGeneralInfo(native); },
                    [](const IntfEntryBuilder& builder) -> Steps {
                      // A builder shows its entry only by giving it away or copying it.
                      const IntfEntry entry = IntfEntryBuilder(builder).Release();
                      return {entry.getGeneralInfo().intf_name == kName,
                              entry.getGeneralInfo().phy_addr == kAddress,
                              entry.getGeneralInfo().redundancy_group_phy_addr == kGroup};
                    }),
              ElementsAre(0, 1, 2, 3));
}

}  // namespace
