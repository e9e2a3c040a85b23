// zorl2::check on hostile bytes, read as every message that has a native record, and as those that
// hold such messages: what it says is what the converters do.
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

// There is no converter to compare with; a DynamicMessage takes another way to the same answer.
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
  // Parsed entries and registrations fail for missing fields only.
  Compare<pb::IntfEntryList>(data, size);
  Compare<pb::IntfIndication>(data, size);
  Compare<pb::HoldTimeConfig>(data, size);
  return 0;
}
