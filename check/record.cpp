// What a converter does with a native record, and what it loses.
#include <cstdint>
#include <utility>

#include "check/check.h"
#include "check/internal/rules.h"
#include "convert/enum_serialization.h"

namespace zorl2::check {
namespace {

namespace pb = zorl2::protobuf;

bool IsKept(ProtocolType native) {
  return DeserializeProtocolType(SerializeProtocolType(native)) == native;
}

bool IsKept(BlockState native) {
  return DeserializeBlockState(SerializeBlockState(native)) == native;
}

Loss Replaced(std::string field, ProtocolType native) {
  return {LossKind::kReplaced, std::move(field), std::to_string(native),
          pb::ProtocolType_Name(SerializeProtocolType(native))};
}

Loss Replaced(std::string field, BlockState native) {
  return {LossKind::kReplaced, std::move(field), std::to_string(native),
          pb::BlockState_Name(SerializeBlockState(native))};
}

std::string At(const char* list, std::size_t index, const char* member) {
  return std::string(list) + "[" + std::to_string(index) + "]" + member;
}

Verdict CheckProtocol(const char* field, ProtocolType native) {
  return internal::CheckSignalProtocol(field, native, IsKept(native),
                                       SerializeProtocolType(native));
}

}  // namespace

Verdict Check(const IntfEntry& record) { return internal::CheckEnumerations(record); }

Verdict Check(const ShutStateInfoSyncSignal& record) {
  return CheckProtocol("shutProtocol", record.protocol);
}

Verdict Check(const BlockStateInfoSyncSignal& record) {
  return CheckProtocol("blockProtocol", record.protocol);
}

std::vector<Loss> FindLosses(const IntfEntry& record) {
  std::vector<Loss> losses;
  if (internal::Fails(Check(record))) return losses;
  std::size_t index = 0;
  for (const ProtocolType protocol : record.getShutdownProtos()) {
    if (!IsKept(protocol)) losses.push_back(Replaced(At("shutdownProtos", index, ""), protocol));
    ++index;
  }
  index = 0;
  for (const auto& [protocol, state] : record.getBlockInfo()) {
    if (!IsKept(protocol))
      losses.push_back(Replaced(At("blockInfo", index, ".protocol"), protocol));
    if (!IsKept(state)) losses.push_back(Replaced(At("blockInfo", index, ".state"), state));
    ++index;
  }
  const std::uint64_t mtu = record.getPhysicalInfo().intf_mtu;
  const auto kept = static_cast<std::uint32_t>(mtu);
  if (kept != mtu) {
    losses.push_back(
        {LossKind::kNarrowed, "physicalInfo.intf_mtu", std::to_string(mtu), std::to_string(kept)});
  }
  return losses;
}

std::vector<Loss> FindLosses(const BlockStateInfoSyncSignal& record) {
  std::vector<Loss> losses;
  if (internal::Fails(Check(record))) return losses;
  std::size_t index = 0;
  for (const auto& [id, state] : record.blockStates) {
    if (!IsKept(state)) losses.push_back(Replaced(At("intfs", index, ".state"), state));
    ++index;
  }
  return losses;
}

std::vector<Loss> FindLosses(const ZORL2InfoClientConfig& record) {
  std::vector<Loss> losses;
  if (!IsKept(record.protocolType)) losses.push_back(Replaced("protocolType", record.protocolType));
  for (const InterfaceCategory category : record.interfaceCategories) {
    if (pb::InterfaceCategory_IsValid(category)) continue;
    losses.push_back({LossKind::kReplaced, "intfCategory", std::to_string(category), ""});
  }
  return losses;
}

std::vector<Loss> FindLosses(const LagMemberOperation& record) {
  if (record.managerData == 0) return {};
  return {{LossKind::kDefaulted, "managerData", std::to_string(record.managerData), "0"}};
}

std::vector<Loss> FindLosses(const zorid_t&) { return {}; }
std::vector<Loss> FindLosses(const ShutStateInfoSyncSignal&) { return {}; }

}  // namespace zorl2::check
