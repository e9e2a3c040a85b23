// What the conversion of a native record loses.
#include <cstdint>
#include <utility>

#include "check/check.h"
#include "check/internal/loss_text.h"
#include "check/internal/rules.h"
#include "convert/enum_serialization.h"

namespace zorl2::check {
namespace {

namespace pb = zorl2::protobuf;

class LossFinder {
 public:
  void Add(LossKind kind, std::string field, std::string before, std::string after) {
    losses.push_back({kind, std::move(field), std::move(before), std::move(after)});
  }

  // `field` gives the path; it is called where something is lost.
  template <typename Field>
  void AddProtocol(ProtocolType native, const Field& field) {
    const pb::ProtocolType message = SerializeProtocolType(native);
    if (DeserializeProtocolType(message) == native) return;
    Add(LossKind::kReplaced, field(), std::to_string(native), pb::ProtocolType_Name(message));
  }

  template <typename Field>
  void AddBlockState(BlockState native, const Field& field) {
    const pb::BlockState message = SerializeBlockState(native);
    if (DeserializeBlockState(message) == native) return;
    Add(LossKind::kReplaced, field(), std::to_string(native), pb::BlockState_Name(message));
  }

  std::vector<Loss> losses;
};

std::string At(const char* list, std::size_t index, const char* rest) {
  return std::string(list) + "[" + std::to_string(index) + "]" + rest;
}

}  // namespace

std::vector<Loss> FindLosses(const zorid_t&) { return {}; }

std::vector<Loss> FindLosses(const IntfEntry& record) {
  if (internal::Fails(Check(record))) return {};
  LossFinder finder;
  const std::uint64_t mtu = record.getPhysicalInfo().intf_mtu;
  const auto kept = static_cast<std::uint32_t>(mtu);
  if (kept != mtu) {
    finder.Add(LossKind::kNarrowed, "physicalInfo.intf_mtu", std::to_string(mtu),
               std::to_string(kept));
  }
  std::size_t index = 0;
  for (const ProtocolType protocol : record.getShutdownProtos()) {
    finder.AddProtocol(protocol, [index] { return At("shutdownProtos", index, ""); });
    ++index;
  }
  index = 0;
  for (const IntfEntry::BlockInfo& info : record.getBlockInfo()) {
    finder.AddProtocol(info.protocol, [index] { return At("blockInfo", index, ".protocol"); });
    finder.AddBlockState(info.state, [index] { return At("blockInfo", index, ".state"); });
    ++index;
  }
  return internal::SortedByKind(std::move(finder.losses));
}

std::vector<Loss> FindLosses(const ShutStateInfoSyncSignal&) { return {}; }

std::vector<Loss> FindLosses(const BlockStateInfoSyncSignal& record) {
  if (internal::Fails(Check(record))) return {};
  LossFinder finder;
  std::size_t index = 0;
  for (const auto& [id, state] : record.blockStates) {
    finder.AddBlockState(state, [index = index] { return At("intfs", index, ".state"); });
    ++index;
  }
  return std::move(finder.losses);
}

std::vector<Loss> FindLosses(const ZORL2InfoClientConfig& record) {
  LossFinder finder;
  finder.AddProtocol(record.protocolType, [] { return "protocolType"; });
  for (const InterfaceCategory category : record.interfaceCategories) {
    if (pb::InterfaceCategory_IsValid(category)) continue;
    finder.Add(LossKind::kReplaced, "intfCategory", std::to_string(category), "");
  }
  return std::move(finder.losses);
}

std::vector<Loss> FindLosses(const LagMemberOperation& record) {
  if (record.managerData == 0) return {};
  return {{LossKind::kDefaulted, "managerData", std::to_string(record.managerData), "0"}};
}

}  // namespace zorl2::check
