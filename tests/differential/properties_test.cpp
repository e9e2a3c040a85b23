// Laws that hold for every input.
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <functional>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/differential/compare.h"
#include "tests/differential/generate.h"

namespace pb = zorl2::protobuf;
using proof::Generator;
using proof::Text;

namespace {

// Text that is not UTF-8 is a legal input; the message of the runtime about it is noise. RC_PARAMS
// in the environment overrides the number of inputs, and its seed repeats a run.
const bool configured = [] {
  google::protobuf::SetLogHandler(nullptr);
  return setenv("RC_PARAMS", "max_success=2000", 0) == 0;
}();

void Check(const char* law, const std::function<void(Generator&)>& property) {
  EXPECT_TRUE(rc::check(law, [&] {
    Generator generator(*rc::gen::arbitrary<std::uint64_t>());
    property(generator);
  })) << law;
}

// The record goes to bytes and back; the wire does not carry every member.
template <typename Converter, typename Message, typename Record>
void ExpectRoundTrip(const Record& record, Record destination, const std::string& expected) {
  Message message;
  RC_ASSERT(Converter().Convert(record, message));
  Message parsed;
  RC_ASSERT(parsed.ParseFromString(message.SerializeAsString()));
  RC_ASSERT(Converter().Convert(parsed, destination));
  RC_ASSERT(Text(destination) == expected);
}

// The next four make records that their messages can express.

oracle::EntryRecord Expressible(Generator& g) {
  oracle::EntryRecord r;
  oracle::Entry whole;
  do {
    g.DrawDamage();
    r = g.NativeEntry();
  } while (oracle::ToMessage(r, whole) != oracle::Outcome::kTrue);
  r.physicalInfo.intf_mtu &= 0xffffffff;
  const auto known = [](ProtocolType p) { return p >= 0 && p <= 12 ? p : PROTOCOL_UNKNOWN; };
  for (ProtocolType& protocol : r.shutdownProtos) protocol = known(protocol);
  for (IntfEntry::BlockInfo& block : r.blockInfo) {
    block.protocol = known(block.protocol);
    if (block.state != BLOCK_STATE_BLOCK) block.state = BLOCK_STATE_FORWARD;
  }
  return r;
}

ProtocolType SignalProtocol(Generator& g) {
  constexpr ProtocolType kProtocols[] = {
      LLDP, L2VM, LACP, STP, ERPS, CFM, LBD, LFD, EFM, BACKUPLINK, PROTOCOL_UNKNOWN};
  return kProtocols[g.Below(std::size(kProtocols))];
}

ShutStateInfoSyncSignal Shut(Generator& g) {
  ShutStateInfoSyncSignal signal = g.NativeShut();
  signal.protocol = SignalProtocol(g);
  return signal;
}

BlockStateInfoSyncSignal Block(Generator& g) {
  BlockStateInfoSyncSignal signal = g.NativeBlockSignal();
  signal.protocol = SignalProtocol(g);
  for (auto& [id, state] : signal.blockStates) {
    state = g.Chance(50) ? BLOCK_STATE_BLOCK : BLOCK_STATE_FORWARD;
  }
  return signal;
}

ZORL2InfoClientConfig Client(Generator& g) {
  ZORL2InfoClientConfig config = g.NativeClient();
  config.protocolType = static_cast<ProtocolType>(g.Below(13));
  config.interfaceCategories.clear();
  for (const InterfaceCategory category : {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF}) {
    if (g.Chance(50)) config.interfaceCategories.insert(category);
  }
  return config;
}

TEST(Properties, RecordsComeBackEqual) {
  Check("identifier", [](Generator& g) {
    const zorid_t id = g.NativeZorid();
    ExpectRoundTrip<ZORIDConverter, pb::Zorid>(id, g.NativeZorid(), Text(id));
  });
  Check("entry, into a used record", [](Generator& g) {
    const IntfEntry entry = proof::Build(Expressible(g));
    ExpectRoundTrip<IntfEntryConverter, pb::IntfEntry>(entry, proof::Build(g.NativeEntry()),
                                                       Text(entry));
  });
  Check("shutdown signal", [](Generator& g) {
    const ShutStateInfoSyncSignal signal = Shut(g);
    ExpectRoundTrip<ShutStateConverter, pb::ShutStateSync>(signal, {}, Text(signal));
  });
  Check("blocking signal", [](Generator& g) {
    const BlockStateInfoSyncSignal signal = Block(g);
    ExpectRoundTrip<BlockStateConverter, pb::BlockStateSync>(signal, {}, Text(signal));
  });
  Check("registration", [](Generator& g) {
    const ZORL2InfoClientConfig config = Client(g);
    ExpectRoundTrip<ZORL2InfoClientConfigConverter, pb::InformationClient>(config, {},
                                                                           Text(config));
  });
  Check("aggregation operation, but for the manager's own member", [](Generator& g) {
    const LagMemberOperation operation = g.NativeLag();
    LagMemberOperation destination = g.NativeLag();
    LagMemberOperation expected = operation;
    expected.managerData = destination.managerData;
    ExpectRoundTrip<LagMemberConverter, pb::LagMemberOperationProto>(operation, destination,
                                                                     Text(expected));
  });
}

// Applying a message a second time changes nothing, although three of the records only grow.
template <typename Converter, typename Message, typename Record>
void ExpectIdempotent(const Record& source, Record destination) {
  Message message;
  RC_ASSERT(Converter().Convert(source, message));
  RC_ASSERT(Converter().Convert(message, destination));
  const std::string once = Text(destination);
  RC_ASSERT(Converter().Convert(message, destination));
  RC_ASSERT(Text(destination) == once);
  // Nor does converting the same record into the message again.
  const std::string bytes = message.SerializeAsString();
  RC_ASSERT(Converter().Convert(source, message));
  RC_ASSERT(message.SerializeAsString() == bytes);
}

TEST(Properties, ASecondTimeChangesNothing) {
  Check("signals", [](Generator& g) {
    ExpectIdempotent<ShutStateConverter, pb::ShutStateSync>(Shut(g), g.NativeShut());
    ExpectIdempotent<BlockStateConverter, pb::BlockStateSync>(Block(g), g.NativeBlockSignal());
  });
  Check("registration", [](Generator& g) {
    ExpectIdempotent<ZORL2InfoClientConfigConverter, pb::InformationClient>(Client(g),
                                                                            g.NativeClient());
  });
  Check("entry and aggregation operation", [](Generator& g) {
    ExpectIdempotent<IntfEntryConverter, pb::IntfEntry>(proof::Build(Expressible(g)),
                                                        proof::Build(g.NativeEntry()));
    ExpectIdempotent<LagMemberConverter, pb::LagMemberOperationProto>(g.NativeLag(), g.NativeLag());
  });
}

TEST(Properties, TheOrderOfRegistrationsDoesNotMatter) {
  Check("two messages", [](Generator& g) {
    pb::InformationClient first, second;
    ZORL2InfoClientConfigConverter().Convert(Client(g), first);
    ZORL2InfoClientConfigConverter().Convert(Client(g), second);
    ZORL2InfoClientConfig one, other;
    ZORL2InfoClientConfigConverter().Convert(first, one);
    ZORL2InfoClientConfigConverter().Convert(second, one);
    ZORL2InfoClientConfigConverter().Convert(second, other);
    ZORL2InfoClientConfigConverter().Convert(first, other);
    RC_ASSERT(one.interfaceCategories == other.interfaceCategories);
  });
}

TEST(Properties, SignalsMergeElementByElement) {
  Check("the order of the elements matters only to an identifier named twice", [](Generator& g) {
    pb::BlockStateSync message;
    BlockStateConverter().Convert(Block(g), message);
    BlockStateInfoSyncSignal sorted, shuffled;
    RC_ASSERT(BlockStateConverter().Convert(message, sorted));
    for (int i = message.intfs_size() - 1; i > 0; --i) {
      message.mutable_intfs()->SwapElements(
          i, static_cast<int>(g.Below(static_cast<std::uint64_t>(i) + 1)));
    }
    RC_ASSERT(BlockStateConverter().Convert(message, shuffled));
    RC_ASSERT(Text(sorted) == Text(shuffled));
  });
  Check("merging in two steps is merging the concatenation", [](Generator& g) {
    pb::BlockStateSync first, second;
    BlockStateConverter().Convert(Block(g), first);
    BlockStateConverter().Convert(Block(g), second);
    BlockStateInfoSyncSignal stepwise = g.NativeBlockSignal();
    BlockStateInfoSyncSignal atOnce = stepwise;
    BlockStateConverter().Convert(first, stepwise);
    BlockStateConverter().Convert(second, stepwise);
    first.MergeFrom(second);
    BlockStateConverter().Convert(first, atOnce);
    RC_ASSERT(Text(stepwise) == Text(atOnce));
  });
}

TEST(Properties, TheWireFormIsStableFromTheSecondTripOn) {
  Check("an accepted entry message, damaged or not, settles after one trip", [](Generator& g) {
    pb::IntfEntry message;
    proof::Fill(g.Entry(), message);
    // As it arrives: an unlisted value is no longer in its field.
    pb::IntfEntry arrived;
    arrived.ParsePartialFromString(message.SerializePartialAsString());
    IntfEntry entry;
    if (!IntfEntryConverter().Convert(arrived, entry)) return;
    pb::IntfEntry once, twice;
    IntfEntryConverter().Convert(entry, once);
    IntfEntry again = proof::Build(g.NativeEntry());
    RC_ASSERT(IntfEntryConverter().Convert(once, again));
    RC_ASSERT(Text(again) == Text(entry));
    IntfEntryConverter().Convert(again, twice);
    RC_ASSERT(once.SerializeAsString() == twice.SerializeAsString());
  });
}

}  // namespace
