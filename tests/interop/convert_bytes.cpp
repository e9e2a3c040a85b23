// convert_bytes MESSAGE: reads the message from standard input, converts it to the native record
// and back, and writes it to standard output. A message without a record is parsed and serialized.
#include <google/protobuf/descriptor.h>
#include <google/protobuf/dynamic_message.h>

#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"

namespace pb = zorl2::protobuf;

namespace {

template <typename Converter, typename Message, typename Native>
bool ThroughNative(google::protobuf::Message& message) {
  auto* typed = dynamic_cast<Message*>(&message);
  if (typed == nullptr) return true;
  Native native;
  if (!Converter().Convert(*typed, native)) return false;
  // Converts into a fresh message, which has nothing of the input.
  Message made;
  if (!Converter().Convert(native, made)) return false;
  *typed = made;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const auto* type = google::protobuf::DescriptorPool::generated_pool()->FindMessageTypeByName(
      std::string("zorl2.protobuf.") + argv[1]);
  if (type == nullptr) return 2;
  const std::unique_ptr<google::protobuf::Message> message(
      google::protobuf::MessageFactory::generated_factory()->GetPrototype(type)->New());
  const std::string bytes{std::istreambuf_iterator<char>(std::cin), {}};
  if (!message->ParseFromString(bytes)) return 3;
  if (!ThroughNative<ZORIDConverter, pb::Zorid, zorid_t>(*message) ||
      !ThroughNative<IntfEntryConverter, pb::IntfEntry, IntfEntry>(*message) ||
      !ThroughNative<ShutStateConverter, pb::ShutStateSync, ShutStateInfoSyncSignal>(*message) ||
      !ThroughNative<BlockStateConverter, pb::BlockStateSync, BlockStateInfoSyncSignal>(*message) ||
      !ThroughNative<ZORL2InfoClientConfigConverter, pb::InformationClient, ZORL2InfoClientConfig>(
          *message) ||
      !ThroughNative<LagMemberConverter, pb::LagMemberOperationProto, LagMemberOperation>(
          *message)) {
    return 4;
  }
  std::cout << message->SerializeAsString();
  return std::cout.flush() ? 0 : 5;
}
