// Compares zorl2::check with the converters on hostile bytes, parsed as every message type that has
// a native record or contains such messages.
#include "fuzz/harness.h"
#include "tests/check/predict.h"

namespace {

namespace pb = zorl2::protobuf;

template <typename Converter, typename Record, typename Message>
void Predict(const std::uint8_t* data, std::size_t size) {
  Message message;
  if (!message.ParsePartialFromArray(data, static_cast<int>(size))) return;
  const auto ends_process = [](const Message& fatal) {
    try {
      Record record{};
      Converter().Convert(fatal, record);
    } catch (const proof::Fault&) {
      return true;
    }
    return false;
  };
  proof::Require(proof::WrongPrediction<Converter, Record>(message, ends_process));
}

// Without a converter to compare with, compares the results for a DynamicMessage.
template <typename Message>
void Compare(const std::uint8_t* data, std::size_t size) {
  Message message;
  if (!message.ParsePartialFromArray(data, static_cast<int>(size))) return;
  proof::Require(proof::WrongDynamic(message));
  if (zorl2::check::Check(message).rule.empty() != message.IsInitialized()) {
    proof::Require("not what the runtime says of " + message.ShortDebugString());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  proof::Silence();
  Predict<ZORIDConverter, zorid_t, pb::Zorid>(data, size);
  Predict<IntfEntryConverter, IntfEntry, pb::IntfEntry>(data, size);
  Predict<ShutStateConverter, ShutStateInfoSyncSignal, pb::ShutStateSync>(data, size);
  Predict<BlockStateConverter, BlockStateInfoSyncSignal, pb::BlockStateSync>(data, size);
  Predict<ZORL2InfoClientConfigConverter, ZORL2InfoClientConfig, pb::InformationClient>(data, size);
  Predict<LagMemberConverter, LagMemberOperation, pb::LagMemberOperationProto>(data, size);
  // Parsed messages of these types are rejected only for a missing field.
  Compare<pb::IntfEntryList>(data, size);
  Compare<pb::IntfIndication>(data, size);
  Compare<pb::HoldTimeConfig>(data, size);
  return 0;
}
